// Figures about a scene graph: the containers it holds by type, its nodes,
// shapes, lights and triangles, and its bounding sphere. Each container is
// counted once however often the graph shares it.
#pragma once

#include <map>
#include <string>
#include <vector>

#include "nerio3d/math/nrSphereBound.h"

class nrContainer;
class nrGeometry;
class nrNode;

class SceneStats {
 public:
  // Walks everything root reaches through its reference fields.
  explicit SceneStats(nrNode* root);

  // Triangles one drawing of geometry makes: the triangles of a primitive set,
  // those of the shared tessellations a solid is drawn from; 0 for lines and points.
  static int trianglesOf(nrGeometry* geometry);

  int nodes = 0;
  int shapes = 0;
  int lights = 0;
  int triangles = 0;
  // Containers of each registered type name.
  std::map<std::string, int> byType;
  // Every container reached, in the order first reached.
  std::vector<nrContainer*> containers;
  nrSphereBound bound;

 private:
  void visit(nrContainer* container, std::map<nrContainer*, bool>& seen);
};
