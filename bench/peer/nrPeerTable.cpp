// nerio3d side by side with Coin3D on the same scene files, in one process:
// reading (time and megabytes of text per second, memory per node in a fresh
// process), drawing (processor time per frame with glFinish, on offscreen
// drawables of one size with one camera and one directional light) and
// picking (time per ray through a fixed grid of viewport pixels). Prints one
// table with both figures and their ratio.
//
//   nrPeerTable SCENE.wrl[=LABEL] ...
#include <GL/gl.h>
#include <Inventor/SbViewportRegion.h>
#include <Inventor/SoDB.h>
#include <Inventor/SoInput.h>
#include <Inventor/SoPickedPoint.h>
#include <Inventor/actions/SoGLRenderAction.h>
#include <Inventor/actions/SoGetBoundingBoxAction.h>
#include <Inventor/actions/SoRayPickAction.h>
#include <Inventor/elements/SoGLCacheContextElement.h>
#include <Inventor/nodes/SoDirectionalLight.h>
#include <Inventor/nodes/SoPerspectiveCamera.h>
#include <Inventor/nodes/SoSeparator.h>
#include <malloc.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <ctime>
#include <fstream>
#include <functional>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

#include "GLCallCensus.h"
#include "nerio3d/nerio3d.h"
#if __has_include("nerio3d/vl/vlDB.h")
#include "nerio3d/vl/vlDB.h"
#define NR_PEER_HAS_READER 1
#endif

namespace {

const int SIZE = 512;              // the drawables' width and height
const int PICK_GRID = 8;           // rays through PICK_GRID² pixels of the viewport's middle half
const int READS = 3;               // reads per library, each in a fresh process
const double FRAME_SECONDS = 1.0;  // frames are drawn for about this long
const float ELEVATION = 0.6f;      // the camera looks down by this angle (radians)
const float LIGHT[3] = {0.2f, -1.0f, -0.4f};

double now() { return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch()).count(); }
double threadCpu() {
  timespec ts;
  clock_gettime(CLOCK_THREAD_CPUTIME_ID, &ts);
  return ts.tv_sec + ts.tv_nsec * 1e-9;
}
double median(std::vector<double> v) {
  if (v.empty()) return NAN;
  std::sort(v.begin(), v.end());
  return v.size() % 2 ? v[v.size() / 2] : (v[v.size() / 2 - 1] + v[v.size() / 2]) / 2;
}
long residentBytes() {
  long pages = 0, resident = 0;
  FILE* f = fopen("/proc/self/statm", "r");
  if (f) {
    if (fscanf(f, "%ld %ld", &pages, &resident) != 2) resident = 0;
    fclose(f);
  }
  return resident * sysconf(_SC_PAGESIZE);
}
// malloc's blocks in use, and the blocks nerio3d maps itself.
long heapBytes() {
  struct mallinfo2 m = mallinfo2();
  return long(m.uordblks + m.hblkhd + nrBlockAllocator::getMappedBytes());
}

// Node instances written in a scene file: names followed by '{' outside
// comments and strings. Both libraries' memory is divided by this count.
long countFileNodes(const std::string& text) {
  long nodes = 0;
  for (size_t i = 0; i < text.size(); ++i) {
    char c = text[i];
    if (c == '#') {
      while (i < text.size() && text[i] != '\n') ++i;
    } else if (c == '"') {
      for (++i; i < text.size() && text[i] != '"'; ++i)
        if (text[i] == '\\') ++i;
    } else if (c == '{') {
      size_t j = i;
      while (j > 0 && std::isspace(static_cast<unsigned char>(text[j - 1]))) --j;
      size_t end = j;
      while (j > 0 && (std::isalnum(static_cast<unsigned char>(text[j - 1])) || text[j - 1] == '_')) --j;
      if (j < end && std::isupper(static_cast<unsigned char>(text[j]))) ++nodes;
    }
  }
  return nodes;
}

// Where both libraries look from: a sphere around the scene seen from above
// the +z side, tilted down by ELEVATION.
struct View {
  float center[3] = {0, 0, 0};
  float radius = 1;
  float fov = float(M_PI) / 4;
  void eye(float out[3]) const {
    float d = radius / std::sin(fov / 2);
    out[0] = center[0];
    out[1] = center[1] + d * std::sin(ELEVATION);
    out[2] = center[2] + d * std::cos(ELEVATION);
  }
  float nearClip() const { return std::max(radius / std::sin(fov / 2) - radius * 1.1f, radius * 0.01f); }
  float farClip() const { return radius / std::sin(fov / 2) + radius * 1.1f; }
};

// One library as the table measures it.
class Library {
 public:
  virtual ~Library() = default;
  virtual const char* name() const = 0;
  // Makes the library ready (once per process).
  virtual void init() = 0;
  // Reads the file as the scene, dropping the one before; false when it cannot.
  virtual bool read(const char* file) = 0;
  // The scene's bounding sphere.
  virtual bool bound(View& view) = 0;
  // Camera and light for drawing and picking; makes its drawable current.
  virtual void setView(const View& view) = 0;
  // Clears, draws and waits for OpenGL to finish.
  virtual void frame() = 0;
  // The OpenGL calls of one frame sorted by what they do; null when the library cannot tell.
  virtual std::unique_ptr<GLCallCensus> frameCalls() { return nullptr; }
  // The world point under the centre of pixel (x, y), y from the bottom.
  virtual bool pick(int x, int y, float point[3]) = 0;
  // Fraction of the drawable's pixels that are not the background.
  double coverage() {
    std::vector<unsigned char> rgba(SIZE * SIZE * 4);
    glReadPixels(0, 0, SIZE, SIZE, GL_RGBA, GL_UNSIGNED_BYTE, rgba.data());
    long covered = 0;
    for (size_t i = 0; i < rgba.size(); i += 4) covered += rgba[i] | rgba[i + 1] | rgba[i + 2] ? 1 : 0;
    return double(covered) / (SIZE * SIZE);
  }
  // Writes the drawable as a binary PPM image.
  void snapshot(const std::string& file) {
    std::vector<unsigned char> rgb(SIZE * SIZE * 3);
    glReadPixels(0, 0, SIZE, SIZE, GL_RGB, GL_UNSIGNED_BYTE, rgb.data());
    FILE* f = fopen(file.c_str(), "wb");
    if (!f) return;
    fprintf(f, "P6\n%d %d\n255\n", SIZE, SIZE);
    for (int y = SIZE - 1; y >= 0; --y) fwrite(&rgb[size_t(y) * SIZE * 3], 1, SIZE * 3, f);
    fclose(f);
  }
  virtual void release() = 0;
};

class Nerio : public Library {
 public:
  const char* name() const override { return "nerio3d"; }
  void init() override {
#ifdef NR_PEER_HAS_READER
    vlDB::init();
#endif
  }
  bool read(const char* file) override {
    release();
#ifdef NR_PEER_HAS_READER
    nrContainer* root = nullptr;
    nrPtrArray list;
    vlDB::readFile(file, root, list);
    if (!root || !root->isOfType(nrNode::getClassType())) {
      if (root) root->unref();
      return false;
    }
    scene = static_cast<nrNode*>(root);
    scene->ref();
    return true;
#else
    (void)file;
    return false;
#endif
  }
  bool bound(View& view) override {
    nrSphereBound sphere;
    scene->getSphereBound(sphere);
    if (sphere.radius <= 0) return false;
    for (int k = 0; k < 3; ++k) view.center[k] = sphere.center[k];
    view.radius = sphere.radius;
    return true;
  }
  void setView(const View& view) override {
    if (!drawable) {
      drawable = nrDrawable::createOffscreen(SIZE, SIZE);
      context = new nrContext(drawable);
      context->ref();
      action = new nrDrawAction;
      action->ref();
    }
    context->makeCurrent(drawable);
    static bool told = false;
    if (!told) {
      told = true;
      fprintf(stderr, "OpenGL: %s, %s\n", reinterpret_cast<const char*>(glGetString(GL_VENDOR)),
              reinterpret_cast<const char*>(glGetString(GL_RENDERER)));
    }
    context->setViewport(0, 0, SIZE, SIZE);
    // What a viewer sets for VRML scenes: depth testing, and solids seen from outside.
    context->setDepthEnable(1);
    context->setCullFace(nrContext::BACK_CULL);
    nrPerspCamera* camera = new nrPerspCamera;
    camera->setHorizFOV(view.fov);
    camera->setVertFOV(view.fov);
    float eye[3];
    view.eye(eye);
    camera->setPosition(eye[0], eye[1], eye[2]);
    camera->setOrientation(1, 0, 0, -ELEVATION);
    camera->setNearClip(view.nearClip());
    camera->setFarClip(view.farClip());
    action->setCamera(camera);
    nrDirectionalLight* light = new nrDirectionalLight;
    light->setDirection(LIGHT[0], LIGHT[1], LIGHT[2]);
    root = new nrGroup;
    root->ref();
    root->addChild(light);
    root->addChild(scene);
    this->camera = camera;
    camera->ref();
  }
  void frame() override {
    context->clear(nrContext::COLOR_CLEAR | nrContext::DEPTH_CLEAR);
    camera->draw(action);
    action->apply(root);
    nrgl::Finish();
  }
  std::unique_ptr<GLCallCensus> frameCalls() override {
    nrGLRecorder recorder;
    frame();
    return std::make_unique<GLCallCensus>(recorder.calls());
  }
  bool pick(int x, int y, float point[3]) override {
    nrHit hit;
    if (!camera->pick(root, x, y, hit, 0, 0, SIZE, SIZE)) return false;
    for (int k = 0; k < 3; ++k) point[k] = hit.getWorldPoint()[k];
    return true;
  }
  void release() override {
    if (root) root->unref();
    if (camera) camera->unref();
    if (scene) scene->unref();
    root = nullptr;
    camera = nullptr;
    scene = nullptr;
  }
  ~Nerio() override {
    release();
    if (action) action->unref();
    if (context) context->unref();
    delete drawable;
  }

 private:
  nrDrawable* drawable = nullptr;
  nrContext* context = nullptr;
  nrDrawAction* action = nullptr;
  nrNode* scene = nullptr;
  nrGroup* root = nullptr;
  nrPerspCamera* camera = nullptr;
};

class Coin : public Library {
 public:
  const char* name() const override { return "Coin3D"; }
  void init() override { SoDB::init(); }
  bool read(const char* file) override {
    release();
    SoInput in;
    if (!in.openFile(file)) return false;
    scene = SoDB::readAll(&in);
    if (!scene) return false;
    scene->ref();
    return true;
  }
  bool bound(View& view) override {
    SoGetBoundingBoxAction box(SbViewportRegion(SIZE, SIZE));
    box.apply(scene);
    if (box.getBoundingBox().isEmpty()) return false;
    SbVec3f c = box.getBoundingBox().getCenter(), lo, hi;
    box.getBoundingBox().getBounds(lo, hi);
    for (int k = 0; k < 3; ++k) view.center[k] = c[k];
    view.radius = (hi - lo).length() / 2;
    return true;
  }
  void setView(const View& view) override {
    if (!drawable) {
      drawable = nrDrawable::createOffscreen(SIZE, SIZE);
      gl = drawable->createContext();
    }
    drawable->makeCurrent(gl);
    SoPerspectiveCamera* camera = new SoPerspectiveCamera;
    camera->heightAngle = view.fov;
    camera->aspectRatio = 1;
    camera->viewportMapping = SoCamera::LEAVE_ALONE;
    float eye[3];
    view.eye(eye);
    camera->position.setValue(eye[0], eye[1], eye[2]);
    camera->orientation.setValue(SbVec3f(1, 0, 0), -ELEVATION);
    camera->nearDistance = view.nearClip();
    camera->farDistance = view.farClip();
    SoDirectionalLight* light = new SoDirectionalLight;
    light->direction.setValue(LIGHT[0], LIGHT[1], LIGHT[2]);
    root = new SoSeparator;
    root->ref();
    root->addChild(camera);
    root->addChild(light);
    root->addChild(scene);
    render.reset(new SoGLRenderAction(SbViewportRegion(SIZE, SIZE)));
    render->setCacheContext(SoGLCacheContextElement::getUniqueCacheContext());
    glEnable(GL_DEPTH_TEST);
  }
  void frame() override {
    glClearColor(0, 0, 0, 1);
    glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
    render->apply(root);
    glFinish();
  }
  bool pick(int x, int y, float point[3]) override {
    SoRayPickAction ray(SbViewportRegion(SIZE, SIZE));
    ray.setNormalizedPoint(SbVec2f((x + 0.5f) / SIZE, (y + 0.5f) / SIZE));
    ray.apply(root);
    SoPickedPoint* picked = ray.getPickedPoint();
    if (!picked) return false;
    for (int k = 0; k < 3; ++k) point[k] = picked->getPoint()[k];
    return true;
  }
  void release() override {
    render.reset();
    if (root) root->unref();
    if (scene) scene->unref();
    root = nullptr;
    scene = nullptr;
  }
  ~Coin() override {
    release();
    nrDrawable::destroyContext(gl);
    delete drawable;
  }

 private:
  nrDrawable* drawable = nullptr;
  nrDrawable::GLContext* gl = nullptr;
  SoSeparator* scene = nullptr;
  SoSeparator* root = nullptr;
  std::unique_ptr<SoGLRenderAction> render;
};

// What one library measured on one scene; NAN where it could not.
struct Figures {
  double readSeconds = NAN, residentPerNode = NAN, heapPerNode = NAN;
  double frameCpu = NAN, frameWall = NAN, coverage = NAN, calls = NAN, callsPerChange = NAN;
  double firstPick = NAN, pickPerRay = NAN, hits = NAN;
  std::vector<std::vector<float>> points;  // per ray: the hit point, or empty
};

// Reads the file READS times, each in a child process that has done nothing
// else, for the time and the memory of a first read.
void measureReads(Library& lib, const char* file, long nodes, Figures& out) {
  std::vector<double> seconds, resident, heap;
  for (int r = 0; r < READS; ++r) {
    int fds[2];
    if (pipe(fds) != 0) return;
    pid_t child = fork();
    if (child == 0) {
      close(fds[0]);
      lib.init();
      // Pages the allocator holds free are handed back before each reading
      // of the resident size: memory freed on the way is not the scene's.
      malloc_trim(0);
      long rss0 = residentBytes(), heap0 = heapBytes();
      double t0 = now();
      bool ok = lib.read(file);
      double seconds = now() - t0;
      malloc_trim(0);
      double result[3] = {seconds, double(residentBytes() - rss0), double(heapBytes() - heap0)};
      if (!ok) result[0] = NAN;
      ssize_t written = write(fds[1], result, sizeof result);
      _exit(written == sizeof result ? 0 : 1);
    }
    close(fds[1]);
    double result[3];
    bool got = read(fds[0], result, sizeof result) == sizeof result;
    close(fds[0]);
    waitpid(child, nullptr, 0);
    if (!got || std::isnan(result[0])) return;
    seconds.push_back(result[0]);
    resident.push_back(result[1]);
    heap.push_back(result[2]);
  }
  out.readSeconds = median(seconds);
  out.residentPerNode = median(resident) / nodes;
  out.heapPerNode = median(heap) / nodes;
}

void measureDrawing(Library& lib, const View& view, const std::string& label, Figures& out) {
  lib.setView(view);
  for (int i = 0; i < 5; ++i) lib.frame();
  out.coverage = lib.coverage();
  if (const char* dir = getenv("NR_PEER_SNAPSHOTS"))
    lib.snapshot(std::string(dir) + "/" + label + "-" + lib.name() + ".ppm");
  std::vector<double> cpu, wall;
  double start = now();
  while (cpu.size() < 10 || (now() - start < FRAME_SECONDS && cpu.size() < 500)) {
    double c0 = threadCpu(), w0 = now();
    lib.frame();
    cpu.push_back(threadCpu() - c0);
    wall.push_back(now() - w0);
  }
  out.frameCpu = median(cpu);
  out.frameWall = median(wall);
  if (std::unique_ptr<GLCallCensus> census = lib.frameCalls()) {
    out.calls = double(census->calls);
    out.callsPerChange = census->ratio();
    fprintf(stderr, "%s, %s: %ld GL calls, %ld drawing, %ld real changes, %ld queries, %ld redundant (%s)\n",
            lib.name(), label.c_str(), census->calls, census->drawing, census->changes, census->queries,
            census->redundant, census->redundantByFunction().c_str());
  }

  std::vector<double> perRay;
  int hits = 0;
  for (int i = 0; i < PICK_GRID * PICK_GRID; ++i) {
    int x = SIZE / 4 + (i % PICK_GRID * 2 + 1) * SIZE / (4 * PICK_GRID),
        y = SIZE / 4 + (i / PICK_GRID * 2 + 1) * SIZE / (4 * PICK_GRID);
    float p[3];
    double t0 = now();
    bool hit = lib.pick(x, y, p);
    double t = now() - t0;
    // The first pick builds what later picks reuse: it is reported apart.
    if (i == 0) {
      out.firstPick = t;
      t0 = now();
      hit = lib.pick(x, y, p);
      t = now() - t0;
    }
    perRay.push_back(t);
    hits += hit;
    out.points.push_back(hit ? std::vector<float>(p, p + 3) : std::vector<float>());
  }
  out.pickPerRay = median(perRay);
  out.hits = hits;
}

// The largest distance between the two libraries' hit points, as a fraction
// of the scene's radius; NAN when they disagree on which rays hit.
double pickAgreement(const Figures& a, const Figures& b, const View& view) {
  if (a.points.size() != b.points.size()) return NAN;
  double worst = 0;
  for (size_t i = 0; i < a.points.size(); ++i) {
    if (a.points[i].empty() != b.points[i].empty()) return NAN;
    if (a.points[i].empty()) continue;
    double d = 0;
    for (int k = 0; k < 3; ++k) d += std::pow(a.points[i][k] - b.points[i][k], 2);
    worst = std::max(worst, std::sqrt(d) / view.radius);
  }
  return worst;
}

std::string number(double v, const char* format) {
  if (std::isnan(v)) return "-";
  char text[64];
  snprintf(text, sizeof text, format, v);
  return text;
}

// A table row; goal is the most the ratio may be, as "<=0.33".
void row(const std::string& scene, const char* figure, double nerio, double coin, const char* format,
         const char* goal = "") {
  double ratio = nerio / coin;
  std::string verdict;
  if (*goal && !std::isnan(ratio)) verdict = std::string(goal) + (ratio <= atof(goal + 2) ? " met" : " NOT met");
  printf("| %s | %s | %s | %s | %s | %s |\n", scene.c_str(), figure, number(nerio, format).c_str(),
         number(coin, format).c_str(), number(ratio, "%.3f").c_str(), verdict.c_str());
}

}  // namespace

int main(int argc, char** argv) {
  if (argc < 2) {
    fprintf(stderr, "usage: %s SCENE.wrl[=LABEL] ...\n", argv[0]);
    return 2;
  }
  struct Scene {
    std::string file, label;
    double megabytes = 0;
    long nodes = 0;
    Figures nerio, coin;
    double agreement = NAN;
  };
  std::vector<Scene> scenes;
  for (int i = 1; i < argc; ++i) {
    Scene s;
    std::string arg = argv[i];
    size_t eq = arg.find('=');
    s.file = arg.substr(0, eq);
    s.label = eq == std::string::npos ? s.file.substr(s.file.find_last_of('/') + 1) : arg.substr(eq + 1);
    std::ifstream in(s.file, std::ios::binary);
    std::stringstream text;
    text << in.rdbuf();
    if (!in) {
      fprintf(stderr, "%s: cannot read %s\n", argv[0], s.file.c_str());
      return 1;
    }
    s.megabytes = text.str().size() / 1e6;
    s.nodes = std::max(countFileNodes(text.str()), 1L);
    scenes.push_back(s);
  }

  Nerio nerio;
  Coin coin;
  Library* libs[2] = {&nerio, &coin};
  // Reads first, in child processes, before this process holds any OpenGL.
  for (Scene& s : scenes)
    for (Library* lib : libs) {
      fprintf(stderr, "%s: reading %s\n", lib->name(), s.label.c_str());
      measureReads(*lib, s.file.c_str(), s.nodes, lib == &nerio ? s.nerio : s.coin);
    }
  for (Library* lib : libs) lib->init();
  for (Scene& s : scenes) {
    View view;
    bool viewSet = false;
    for (Library* lib : libs) {
      fprintf(stderr, "%s: drawing and picking %s\n", lib->name(), s.label.c_str());
      if (!lib->read(s.file.c_str())) continue;
      if (!viewSet) viewSet = lib->bound(view);
      measureDrawing(*lib, view, s.file.substr(s.file.find_last_of('/') + 1), lib == &nerio ? s.nerio : s.coin);
      lib->release();
    }
    s.agreement = pickAgreement(s.nerio, s.coin, view);
  }

  printf("| scene | figure | nerio3d | Coin3D | ratio | goal |\n|---|---|---|---|---|---|\n");
  for (const Scene& s : scenes) {
    char name[256];
    snprintf(name, sizeof name, "%s (%.1f MB, %ld nodes)", s.label.c_str(), s.megabytes, s.nodes);
    const Figures &n = s.nerio, &c = s.coin;
    row(name, "read s", n.readSeconds, c.readSeconds, "%.3f", "<=0.333");
    row("", "read MB/s", s.megabytes / n.readSeconds, s.megabytes / c.readSeconds, "%.1f");
    row("", "resident bytes/node", n.residentPerNode, c.residentPerNode, "%.0f", "<=1");
    row("", "heap bytes/node", n.heapPerNode, c.heapPerNode, "%.0f");
    row("", "frame CPU ms", n.frameCpu * 1e3, c.frameCpu * 1e3, "%.3f", "<=0.33");
    row("", "frame wall ms", n.frameWall * 1e3, c.frameWall * 1e3, "%.3f");
    row("", "GL calls/frame", n.calls, c.calls, "%.0f");
    printf("| | GL calls per change or draw | %s | - | - | %s |\n", number(n.callsPerChange, "%.3f").c_str(),
           std::isnan(n.callsPerChange) ? "" : n.callsPerChange <= 1.05 ? "<=1.05 met" : "<=1.05 NOT met");
    row("", "pixels covered %", n.coverage * 100, c.coverage * 100, "%.1f");
    row("", "pick us/ray", n.pickPerRay * 1e6, c.pickPerRay * 1e6, "%.1f", "<=0.05");
    row("", "first pick ms", n.firstPick * 1e3, c.firstPick * 1e3, "%.2f");
    row("", "rays hitting", n.hits, c.hits, "%.0f");
    printf("| | hit points apart (of radius) | %s | | | |\n", number(s.agreement, "%.1e").c_str());
  }
  return 0;
}
