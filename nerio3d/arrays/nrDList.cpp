#include "nerio3d/arrays/nrDList.h"

#include "nerio3d/core/nrGlobal.h"

int nrDList::getCount() const {
  int n = 0;
  for (nrDListItem* i = first; i; i = i->next) ++n;
  return n;
}

// An item linked already (into this list or, unless it stands alone there,
// another) is refused: linking it again would cut the list or close a loop.
void nrDList::append(nrDListItem* item) {
  if (!item) return;
  if (item->prev || item->next || item == first) {
    nrGlobal::notify(nrGlobal::WARN, nrGlobal::USAGE, "nrDList::append() - item is in a list already");
    return;
  }
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
