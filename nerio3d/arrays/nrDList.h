// A doubly linked list of items that the list does not own: items derive from
// nrDListItem, and whoever makes one links, unlinks and deletes it.
#pragma once

class nrDListItem {
 public:
  nrDListItem* getNext() const { return next; }
  nrDListItem* getPrev() const { return prev; }

 private:
  friend class nrDList;
  nrDListItem* next = nullptr;
  nrDListItem* prev = nullptr;
};

class nrDList {
 public:
  nrDListItem* getFirst() const { return first; }
  nrDListItem* getLast() const { return last; }
  bool isEmpty() const { return first == nullptr; }
  int getCount() const;

  // Links item, which must not be in a list, at the tail; an item linked
  // already is refused with a warning.
  void append(nrDListItem* item);
  // Unlinks item, which must be in this list.
  void remove(nrDListItem* item);

 private:
  nrDListItem* first = nullptr;
  nrDListItem* last = nullptr;
};
