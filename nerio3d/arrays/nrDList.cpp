#include "nerio3d/arrays/nrDList.h"

int nrDList::getCount() const {
  int n = 0;
  for (nrDListItem* i = first; i; i = i->next) ++n;
  return n;
}

void nrDList::append(nrDListItem* item) {
  if (!item) return;
  item->prev = last;
  item->next = nullptr;
  if (last)
    last->next = item;
  else
    first = item;
  last = item;
}

void nrDList::remove(nrDListItem* item) {
  // An item linked nowhere (removed before) has no neighbours and is not first.
  if (!item || (!item->prev && first != item)) return;
  if (item->prev)
    item->prev->next = item->next;
  else
    first = item->next;
  if (item->next)
    item->next->prev = item->prev;
  else
    last = item->prev;
  item->next = item->prev = nullptr;
}
