// The node of one window in the list of all windows.
#pragma once

#include "nerio3d/arrays/nrDList.h"

class nrWindow;

class nrWindowItem : public nrDListItem {
 public:
  explicit nrWindowItem(nrWindow* w) : window(w) {}
  nrWindow* window;
};
