// nrview: shows a scene file in a window with examiner navigation, or renders
// one frame of it offscreen to a PNG (--snapshot). Without a file it shows the
// bundled default scene.
#include <unistd.h>

#include <climits>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>

#include "SceneFile.h"
#include "SceneStats.h"
#include "SceneView.h"
#include "Snapshot.h"
#include "WindowViewer.h"
#include "nerio3d/nodes/nrGroup.h"

namespace {

const char* const usage =
    "usage: nrview [FILE]\n"
    "       nrview --snapshot OUT.png [--size WxH] [--time SECONDS] [FILE]\n"
    "Shows FILE (the bundled default scene when none is given) in a window, or\n"
    "renders one frame of it offscreen to OUT.png at scene time SECONDS (0).\n"
    "In the window: left drag turns, middle (or shift + left) drag pans, right\n"
    "drag and the wheel zoom; r resets the view, w toggles wireframe, h the\n"
    "headlight, q and Escape quit.\n";

struct Options {
  const char* file = nullptr;
  const char* snapshot = nullptr;
  int width = 640, height = 480;
  double time = 0;
};

// False after a message when the command line cannot be used.
bool parse(int argc, char** argv, Options& o) {
  for (int i = 1; i < argc; ++i) {
    const char* a = argv[i];
    const char* value = i + 1 < argc ? argv[i + 1] : nullptr;
    char* end = nullptr;
    if (!strcmp(a, "--snapshot") && value) {
      o.snapshot = argv[++i];
    } else if (!strcmp(a, "--size") && value) {
      ++i;
      o.width = int(strtol(value, &end, 10));
      if (*end != 'x' || (o.height = int(strtol(end + 1, &end, 10)), *end) || o.width < 1 || o.height < 1 ||
          o.width > 16384 || o.height > 16384) {
        fprintf(stderr, "nrview: --size %s: expected WIDTHxHEIGHT, e.g. 640x480\n", value);
        return false;
      }
    } else if (!strcmp(a, "--time") && value) {
      ++i;
      o.time = strtod(value, &end);
      if (*end || end == value || !std::isfinite(o.time)) {
        fprintf(stderr, "nrview: --time %s: expected a number of seconds\n", value);
        return false;
      }
    } else if (a[0] == '-' && a[1]) {
      fprintf(stderr, "nrview: %s: unknown option or missing value\n%s", a, usage);
      return false;
    } else if (o.file) {
      fprintf(stderr, "nrview: one scene file at a time\n%s", usage);
      return false;
    } else {
      o.file = a;
    }
  }
  return true;
}

bool exists(const std::string& path) { return access(path.c_str(), R_OK) == 0; }

// The bundled scene: installed beside the program (../share/nerio3d), else in
// the source tree the program was built from.
std::string defaultScene() {
  char self[PATH_MAX];
  ssize_t n = readlink("/proc/self/exe", self, sizeof self - 1);
  if (n > 0) {
    self[n] = 0;
    std::string dir(self);
    dir.erase(dir.rfind('/'));
    std::string installed = dir + "/../share/nerio3d/default.wrl";
    if (exists(installed)) return installed;
  }
  return NERIO3D_SOURCE_DATA "/default.wrl";
}

}  // namespace

int main(int argc, char** argv) {
  if (argc == 2 && (!strcmp(argv[1], "--help") || !strcmp(argv[1], "-h"))) {
    fputs(usage, stdout);
    return 0;
  }
  Options o;
  if (!parse(argc, argv, o)) return 2;
  std::string file = o.file ? o.file : defaultScene();

  double readSeconds = 0;
  nrGroup* scene = SceneFile::load("nrview", file.c_str(), true, readSeconds);
  if (!scene) return 1;
  int status = 0;
  {
    SceneView view(scene);
    if (o.snapshot) {
      double frameSeconds = 0;
      if (Snapshot::render(view, o.snapshot, o.width, o.height, o.time, frameSeconds)) {
        SceneStats stats(scene);
        printf("%s: %dx%d at %g s: %d nodes, %d shapes, %d triangles, read %.1f ms, frame %.1f ms\n", o.snapshot,
               o.width, o.height, o.time, stats.nodes, stats.shapes, stats.triangles, readSeconds * 1000,
               frameSeconds * 1000);
      } else {
        status = 1;
      }
    } else {
      status = WindowViewer::run(view, file.c_str());
    }
  }
  scene->unref();
  return status;
}
