// nrdump: reads a scene file and writes it back as text, or prints its figures.
//
//   nrdump FILE          the scene in the file format: each shared container
//                        written once under DEF and referred to again with USE,
//                        fields only where they differ from their defaults,
//                        then the routes between named containers
//   nrdump --stats FILE  containers by type, nodes, shapes, lights, triangles
//                        and the bounds (world box and bounding sphere)
#include <cstdio>
#include <cstring>

#include "SceneFile.h"
#include "SceneStats.h"
#include "nerio3d/fields/nrContainer.h"
#include "nerio3d/fields/nrOutput.h"
#include "nerio3d/nodes/nrGroup.h"

namespace {

// The routes the text output leaves out, as ROUTE statements. Routes read
// from a file join containers named by DEF, which the text keeps.
void writeRoutes(const SceneStats& stats) {
  for (nrContainer* from : stats.containers) {
    for (int i = 0; i < from->getNumFields(); ++i) {
      nrField* field = from->getField(i);
      for (int j = 0; j < field->getNumOutputs(); ++j) {
        nrField* to = field->getOutput(j);
        nrContainer* target = to->getContainer();
        // Engines connect their own inputs to themselves: not routes.
        if (target == from || !from->getName() || !target->getName()) continue;
        printf("ROUTE %s.%s TO %s.%s\n", from->getName(), field->getName(), target->getName(), to->getName());
      }
    }
    // Only the fields that hold something of their own stay.
    from->freeUnconnectedFields();
  }
}

void printStats(const char* file, const SceneStats& stats) {
  printf("%s\n", file);
  for (const auto& entry : stats.byType) printf("  %-28s %d\n", entry.first.c_str(), entry.second);
  printf("%d nodes, %d shapes, %d lights, %d triangles\n", stats.nodes, stats.shapes, stats.lights, stats.triangles);
  const nrBoxBound& box = stats.box;
  const nrSphereBound& b = stats.bound;
  if (box.isEmpty() || b.isEmpty()) {
    printf("bounds: empty\n");
    return;
  }
  printf("bounds: box (%g, %g, %g) to (%g, %g, %g); sphere centre (%g, %g, %g), radius %g\n", box.min[0], box.min[1],
         box.min[2], box.max[0], box.max[1], box.max[2], b.center[0], b.center[1], b.center[2], b.radius);
}

}  // namespace

int main(int argc, char** argv) {
  bool stats = argc == 3 && !strcmp(argv[1], "--stats");
  if (argc != 2 + stats || argv[argc - 1][0] == '-') {
    fprintf(stderr, "usage: nrdump [--stats] FILE\n");
    return 2;
  }
  const char* file = argv[argc - 1];
  double seconds;
  nrGroup* root = SceneFile::load("nrdump", file, false, seconds);
  if (!root) return 1;
  SceneStats figures(root);
  if (stats) {
    printStats(file, figures);
  } else {
    printf("#VRML V2.0 utf8\n");
    fflush(stdout);
    {
      // The writer closes the stream it was given when it goes.
      nrOutput out(stdout);
      out.write(root);
      fputs("\n", stdout);
      writeRoutes(figures);
    }
  }
  root->unref();
  return 0;
}
