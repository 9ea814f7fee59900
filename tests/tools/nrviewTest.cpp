// The programs as users run them: nrview's snapshots against a reference
// image, its answers to bad input, make run without a display, nrdump's text
// read back, and nrview's window driven by real pointer input under X.
#include <gtest/gtest.h>
#include <signal.h>
#include <stdlib.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <fstream>
#include <random>
#include <sstream>
#include <string>
#include <vector>

#include "nerio3d/platform/nrImageFile.h"

// After the test framework, whose names X11's macros would rewrite.
#include <X11/Xlib.h>
#include <X11/Xutil.h>
#include <X11/extensions/XTest.h>

namespace {

const std::string tools = NR_TOOLS_DIR;
const std::string source = NR_SOURCE_DIR;

std::string slurp(const std::string& path) {
  std::ifstream in(path);
  std::stringstream s;
  s << in.rdbuf();
  return s.str();
}

struct Result {
  int status;  // exit code; -1 when the program did not exit normally (a crash)
  std::string out, err;
};

class Programs : public testing::Test {
 protected:
  void SetUp() override {
    char pattern[] = "/tmp/nrview-test-XXXXXX";
    dir = mkdtemp(pattern);
  }
  void TearDown() override { system(("rm -rf " + dir).c_str()); }

  std::string path(const char* name) const { return dir + "/" + name; }

  // Runs a shell command line, its output kept apart.
  Result run(const std::string& command) {
    int s = system((command + " >" + path("out") + " 2>" + path("err")).c_str());
    return {WIFEXITED(s) ? WEXITSTATUS(s) : -1, slurp(path("out")), slurp(path("err"))};
  }
  Result nrview(const std::string& args) { return run(tools + "/nrview " + args); }

  std::string dir;
};

struct Image {
  int width = 0, height = 0;
  std::vector<unsigned char> rgb;
  bool read(const std::string& path) {
    nrImageFile file;
    if (!file.open(path.c_str()) || file.getChannels() != 3) return false;
    width = file.getWidth();
    height = file.getHeight();
    rgb.resize(size_t(width) * height * 3);
    return file.readTile(rgb.data());
  }
};

// Pixels with a channel more than tolerance apart.
int differing(const Image& a, const Image& b, int tolerance) {
  int n = 0;
  for (size_t i = 0; i + 2 < a.rgb.size() && i + 2 < b.rgb.size(); i += 3)
    for (int c = 0; c < 3; ++c)
      if (std::abs(a.rgb[i + c] - b.rgb[i + c]) > tolerance) {
        ++n;
        break;
      }
  return n;
}

TEST_F(Programs, SnapshotMatchesTheReferenceAndLaterTimesShowTheAnimation) {
  Result r = nrview("--snapshot " + path("a.png") + " --size 320x240 --time 0.75");
  ASSERT_EQ(r.status, 0) << r.err;
  int nodes, shapes, triangles;
  double read, frame;
  ASSERT_EQ(sscanf(r.out.c_str(),
                   (path("a.png") + ": 320x240 at 0.75 s: %d nodes, %d shapes, %d triangles, "
                                    "read %lf ms, frame %lf ms\n")
                       .c_str(),
                   &nodes, &shapes, &triangles, &read, &frame),
            5)
      << r.out;
  EXPECT_EQ(shapes, 8);
  EXPECT_GT(triangles, 100);

  // Rasterisers differ in the last bit and along edges: a small tolerance
  // and a bounded count of pixels beyond it.
  Image a, reference, b;
  ASSERT_TRUE(a.read(path("a.png")) && reference.read(source + "/tests/data/nrview-default.png"));
  ASSERT_EQ(a.width * a.height, reference.width * reference.height);
  EXPECT_LT(differing(a, reference, 12), a.width * a.height / 100);

  // The cube has turned further; the rest of the picture stays.
  ASSERT_EQ(nrview("--snapshot " + path("b.png") + " --size 320x240 --time 2.25").status, 0);
  ASSERT_TRUE(b.read(path("b.png")));
  int moved = differing(a, b, 12);
  EXPECT_GT(moved, 300);
  EXPECT_LT(moved, a.width * a.height / 10);
}

TEST_F(Programs, BadInputEndsInOneLineAndAFailingExitCode) {
  std::mt19937 random(17);
  std::string noise(4096, '\0');
  for (char& c : noise) c = char(random() % 255 + 1);
  noise[0] = 'V';
  std::ofstream(path("noise.wrl")) << noise;
  std::ofstream(path("empty.wrl")) << "#VRML V2.0 utf8\nGroup { }\n";

  struct Case {
    std::string args;
    int status;
    std::string lastLine;
  };
  const std::string png = " --snapshot " + path("x.png") + " ";
  for (const Case& c : {
           Case{png + path("missing.wrl"), 1,
                "nrview: " + path("missing.wrl") + ": no such file (nor in NR_DATAFILE_PATH)"},
           Case{png + path("noise.wrl"), 1,
                "nrview: " + path("noise.wrl") + ": not a scene file (VRML 2.0 text expected)"},
           Case{png + path("empty.wrl"), 1, "nrview: " + path("empty.wrl") + ": the scene has nothing to draw"},
           Case{png + "--size 12by4", 2, "nrview: --size 12by4: expected WIDTHxHEIGHT, e.g. 640x480"},
           Case{png + "--time soon", 2, "nrview: --time soon: expected a number of seconds"},
           Case{png + "--time nan", 2, "nrview: --time nan: expected a number of seconds"},
       }) {
    Result r = nrview(c.args);
    EXPECT_EQ(r.status, c.status) << c.args << "\n" << r.err;
    std::string err = r.err.substr(0, r.err.size() - 1);
    EXPECT_EQ(err.substr(err.rfind('\n') + 1), c.lastLine) << c.args;
  }
  // The reader's own message about the header comes first, unchanged.
  EXPECT_NE(nrview(png + path("noise.wrl")).err.find("File does not have a valid header string"), std::string::npos);
  EXPECT_NE(access(path("x.png").c_str(), F_OK), 0);
}

TEST_F(Programs, MakeRunWithoutADisplayWritesTheDemoPicture) {
  Result r = run("env -u DISPLAY bash " + source + "/scripts/run-demo " + tools);
  ASSERT_EQ(r.status, 0) << r.err;
  const std::string picture = tools + "/nerio3d-demo.png";
  EXPECT_EQ(r.out.rfind(picture + ": ", 0), 0u) << r.out;
  Image demo;
  EXPECT_TRUE(demo.read(picture));
}

TEST_F(Programs, DumpedTextReadsBackIntoTheSamePicture) {
  Result dump = run(tools + "/nrdump " + source + "/data/default.wrl");
  ASSERT_EQ(dump.status, 0) << dump.err;
  EXPECT_NE(dump.out.find("ROUTE SpinPath.value TO Spinner.rotation"), std::string::npos) << dump.out;
  // The texture is found beside the scene.
  system(("cp " + source + "/data/checker.png " + dir).c_str());
  // A compressed scene reads as the same text.
  system(("gzip -c " + source + "/data/default.wrl > " + path("packed.wrl.gz")).c_str());
  Result packed = run(tools + "/nrdump " + path("packed.wrl.gz"));
  EXPECT_EQ(packed.status, 0) << packed.err;
  EXPECT_EQ(packed.out, dump.out);
  std::ofstream(path("dumped.wrl")) << dump.out;
  ASSERT_EQ(nrview("--snapshot " + path("a.png") + " --size 160x120 --time 1 " + source + "/data/default.wrl").status,
            0);
  Result again = nrview("--snapshot " + path("b.png") + " --size 160x120 --time 1 " + path("dumped.wrl"));
  ASSERT_EQ(again.status, 0) << again.err;
  Image a, b;
  ASSERT_TRUE(a.read(path("a.png")) && b.read(path("b.png")));
  EXPECT_EQ(differing(a, b, 2), 0);

  Result stats = run(tools + "/nrdump --stats " + source + "/data/default.wrl");
  ASSERT_EQ(stats.status, 0) << stats.err;
  for (const char* line : {"  Shape                        8\n", "  TimeSensor                   1\n",
                           "  TouchSensor                  1\n", " 8 shapes, 2 lights, "})
    EXPECT_NE(stats.out.find(line), std::string::npos) << line << "\n" << stats.out;
}

// The window of the running nrview, found by its title; 0 when none.
Window findViewer(Display* display, Window under) {
  Window root, parent, *children = nullptr;
  unsigned count = 0;
  Window found = 0;
  char* name = nullptr;
  if (XFetchName(display, under, &name) && name) {
    if (!strncmp(name, "nrview: ", 8)) found = under;
    XFree(name);
  }
  if (!found && XQueryTree(display, under, &root, &parent, &children, &count))
    for (unsigned i = 0; i < count && !found; ++i) found = findViewer(display, children[i]);
  if (children) XFree(children);
  return found;
}

// The window's pixels as the screen shows them, each as 0xRRGGBB; empty
// until the window is on the screen.
std::vector<unsigned long> grab(Display* display, Window w) {
  XWindowAttributes a;
  std::vector<unsigned long> pixels;
  if (!XGetWindowAttributes(display, w, &a) || a.map_state != IsViewable) return pixels;
  int x, y;
  Window child;
  XTranslateCoordinates(display, w, a.root, 0, 0, &x, &y, &child);
  // The part on the screen: a window may be placed a pixel past its corner.
  int width = std::min(a.width + std::min(x, 0), a.screen->width - std::max(x, 0));
  int height = std::min(a.height + std::min(y, 0), a.screen->height - std::max(y, 0));
  XImage* image = XGetImage(display, a.root, std::max(x, 0), std::max(y, 0), width, height, AllPlanes, ZPixmap);
  if (!image) return pixels;
  for (int j = 0; j < height; ++j)
    for (int i = 0; i < width; ++i) pixels.push_back(XGetPixel(image, i, j) & 0xFFFFFF);
  XDestroyImage(image);
  return pixels;
}

// The window's pixels once a drawn frame stays on the screen for a while.
std::vector<unsigned long> settled(Display* display, Window w) {
  std::vector<unsigned long> last = grab(display, w), now;
  for (int i = 0; i < 25; ++i, last = now) {
    usleep(200000);
    now = grab(display, w);
    if (now == last && std::count(now.begin(), now.end(), now.empty() ? 0 : now[0]) < long(now.size())) break;
  }
  return now;
}

int changed(const std::vector<unsigned long>& a, const std::vector<unsigned long>& b) {
  int n = 0;
  for (size_t i = 0; i < a.size() && i < b.size(); ++i) n += a[i] != b[i];
  return n;
}

TEST_F(Programs, WindowDrivesTouchSensorsTurnsTheViewWithALeftDragAndQuitsOnQ) {
  if (!getenv("DISPLAY")) GTEST_SKIP() << "no X display";
  Display* display = XOpenDisplay(nullptr);
  ASSERT_NE(display, nullptr);
  // A still scene, lopsided so that a turn shows, whose box takes the colour
  // of the surface direction under the pointer.
  std::ofstream(path("still.wrl"))
      << "#VRML V2.0 utf8\n"
         "DEF T TouchSensor { }\n"
         "Shape { appearance Appearance { material DEF M Material { } } geometry Box { } }\n"
         "Transform { translation 2 0.5 0 children Shape { geometry Cone { } } }\n"
         "ROUTE T.hitNormal_changed TO M.set_diffuseColor\n";
  pid_t viewer = fork();
  if (viewer == 0) {
    // Under the leak checker: GLX unloads Mesa's driver before the checker
    // reports, which then cannot name the driver's own leaks to suppress
    // them. The snapshot tests check nrview's own memory.
    if (const char* asan = getenv("ASAN_OPTIONS"))
      setenv("ASAN_OPTIONS", (std::string(asan) + ":detect_leaks=0").c_str(), 1);
    execl((tools + "/nrview").c_str(), "nrview", path("still.wrl").c_str(), nullptr);
    _exit(127);
  }
  Window w = 0;
  for (int i = 0; i < 1000 && !w; ++i, usleep(10000)) w = findViewer(display, DefaultRootWindow(display));
  ASSERT_NE(w, 0u);
  std::vector<unsigned long> before = settled(display, w);
  ASSERT_FALSE(before.empty());

  // Moves the pointer onto pixel (x, y) of the window.
  auto moveTo = [&](int x, int y) {
    Window child;
    XTranslateCoordinates(display, w, DefaultRootWindow(display), x, y, &x, &y, &child);
    XTestFakeMotionEvent(display, -1, x, y, CurrentTime);
    XFlush(display);
  };
  // Over the box, its touch sensor repaints it.
  moveTo(250, 300);
  std::vector<unsigned long> touched = settled(display, w);
  EXPECT_GT(changed(before, touched), 2000);
  before = touched;

  // A drag from the empty corner turns the view.
  moveTo(60, 60);
  XTestFakeButtonEvent(display, 1, True, CurrentTime);
  for (int step = 1; step <= 10; ++step, usleep(20000)) moveTo(60 + 15 * step, 60);
  XTestFakeButtonEvent(display, 1, False, CurrentTime);
  XFlush(display);
  EXPECT_GT(changed(before, settled(display, w)), 2000);

  for (Bool down : {True, False})
    XTestFakeKeyEvent(display, XKeysymToKeycode(display, XStringToKeysym("q")), down, CurrentTime);
  XFlush(display);
  int status = -1;
  for (int i = 0; i < 1000 && waitpid(viewer, &status, WNOHANG) == 0; ++i) usleep(10000);
  if (!WIFEXITED(status)) kill(viewer, SIGKILL), waitpid(viewer, &status, 0);
  EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0) << status;
  XCloseDisplay(display);
}

}  // namespace
