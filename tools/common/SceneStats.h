// Figures about a scene graph: the containers it holds by type, its nodes,
// shapes, lights and triangles, and its bounding sphere. Each container is
// counted once however often the graph shares it.
#pragma once

#include <map>
#include <string>
#include <vector>

#include "nerio3d/math/nrBoxBound.h"
#include "nerio3d/math/nrSphereBound.h"

class nrContainer;
class nrGeometry;
class nrMatrix4f;
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
  // The node's bounding sphere, and the world box around the geometry of
  // every shape as its transforms place it (all children of selecting groups
  // counted, billboards unturned).
  nrSphereBound bound;
  nrBoxBound box;

 private:
  void visit(nrContainer* container, std::map<nrContainer*, bool>& seen);
  void extendBox(nrNode* node, const nrMatrix4f& toWorld);
};
