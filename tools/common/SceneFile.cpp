#include "SceneFile.h"

#include <chrono>
#include <cstdio>

#include "SceneStats.h"
#include "nerio3d/arrays/nrTypedArray.h"
#include "nerio3d/core/nrGlobal.h"
#include "nerio3d/core/nrString.h"
#include "nerio3d/nodes/nrGroup.h"
#include "nerio3d/vl/vlDB.h"

namespace {

// Scene files are text whose first line starts with '#', or that text
// compressed with gzip (which the reader unpacks as it reads).
bool hasHeader(const char* path) {
  FILE* f = fopen(path, "rb");
  if (!f) return false;
  int c0 = fgetc(f);
  int c1 = fgetc(f);
  fclose(f);
  return c0 == '#' || (c0 == 0x1f && c1 == 0x8b);
}

}  // namespace

nrGroup* SceneFile::load(const char* program, const char* fileName, bool drawable, double& seconds) {
  seconds = 0;
  nrString path;
  if (!nrGlobal::findFile(fileName, path, nrGlobal::READ_FMODE)) {
    fprintf(stderr, "%s: %s: no such file (nor in NR_DATAFILE_PATH)\n", program, fileName);
    return nullptr;
  }
  nrContainer* read = nullptr;
  nrPtrArray list;
  auto start = std::chrono::steady_clock::now();
  vlDB::readFile(fileName, read, list);
  seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
  if (!read) {
    fprintf(stderr, "%s: %s: cannot be opened for reading\n", program, fileName);
    return nullptr;
  }
  nrGroup* root = static_cast<nrGroup*>(read);
  root->ref();
  if (!hasHeader(path.getString())) {
    fprintf(stderr, "%s: %s: not a scene file (VRML 2.0 text expected)\n", program, fileName);
    root->unref();
    return nullptr;
  }
  if (drawable && SceneStats(root).shapes == 0) {
    fprintf(stderr, "%s: %s: the scene has nothing to draw\n", program, fileName);
    root->unref();
    return nullptr;
  }
  return root;
}
