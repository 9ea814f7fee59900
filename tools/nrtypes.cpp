// Prints every registered run-time type of the library as a table: type name,
// parent type name and number of fields, in registration-dictionary order.
#include <cstdio>

#include "nerio3d/nerio3d.h"

int main() {
  nrObject::initClasses();
  int n = nrType::getNumTypes();
  printf("%-28s %-28s %s\n", "Type", "Parent", "Fields");
  for (int i = 0; i < n; ++i) {
    nrType* t = nrType::getType(i);
    printf("%-28s %-28s %d\n", t->getName(), t->getParent() ? t->getParent()->getName() : "-", t->getNumFields());
  }
  printf("%d types\n", n);
  return 0;
}
