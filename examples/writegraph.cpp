// Builds a small graph in code and writes it as text: a group used twice is
// written once under DEF and referred to again with USE.
#include <cstdio>

#include "nerio3d/nerio3d.h"

int main() {
  nrObject::initClasses();

  nrGroup* root = new nrGroup;
  root->ref();
  nrGroup* shared = new nrGroup;
  shared->setName("Shared");
  root->addChild(shared);
  root->addChild(new nrGroup);
  root->addChild(shared);

  nrSphereBound sphere;
  root->getSphereBound(sphere);

  nrOutput out(stdout);
  out.write(root);
  printf("\n");
  root->unref();
  return 0;
}
