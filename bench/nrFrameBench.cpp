// One frame of N transformed shapes sharing M appearances, drawn offscreen:
// the processor time of a frame, and the OpenGL calls it issues against the
// calls the scene needs at the least (counter "needed"; goal: "calls" no more
// than 5% above it).
//
// Needed per frame: the camera's 7 (two matrix modes, two identities, the
// frustum, its rotation and translation); per shape 3 for its transform
// (push, multiply, pop) and 3 to draw its vertex arrays (normal and vertex
// pointers, one glDrawArrays); per change of appearance between consecutive
// shapes, the material's 5 (four colours and the shininess). Shapes take the
// appearances in turn, so with M > 1 every shape changes the material.
#include <benchmark/benchmark.h>

#include <cmath>

#include "nerio3d/nerio3d.h"

namespace {

struct Frame {
  nrDrawable* drawable = nullptr;
  nrContext* context = nullptr;
  nrGroup* root = nullptr;
  nrPerspCamera* camera = nullptr;
  nrDrawAction* action = nullptr;
  int switches = 0;

  Frame(int shapes, int appearances) {
    drawable = nrDrawable::createOffscreen(256, 256);
    if (!drawable) return;
    context = new nrContext(drawable);
    context->ref();
    context->makeCurrent(drawable);

    // One shared box of 12 triangles with a normal per vertex.
    nrCoordSet3f* coords = new nrCoordSet3f;
    nrNormalSet3f* normals = new nrNormalSet3f;
    for (int face = 0; face < 6; ++face) {
      int axis = face / 2;
      float sign = face % 2 ? -1.0f : 1.0f;
      nrVec3f n(0, 0, 0), u(0, 0, 0), v(0, 0, 0);
      n[axis] = sign;
      u[(axis + 1) % 3] = 1;
      v[(axis + 2) % 3] = sign;
      const float corners[6][2] = {{-1, -1}, {1, -1}, {1, 1}, {-1, -1}, {1, 1}, {-1, 1}};
      for (const auto& c : corners) {
        nrVec3f p;
        p.addScaled(n, c[0], u);
        p.addScaled(p, c[1], v);
        coords->append(p);
        normals->append(n);
      }
    }
    nrTriSet* box = new nrTriSet;
    box->setCoordSet(coords);
    box->setNormalSet(normals);
    box->setNormalBind(nrGeoSet::PER_VERTEX_NORMAL);
    box->setPrimCount(12);

    nrAppearance** apps = new nrAppearance*[appearances];
    for (int a = 0; a < appearances; ++a) {
      apps[a] = new nrAppearance;
      apps[a]->ref();
      nrMaterial* m = new nrMaterial;
      m->setDiffuseColor(float(a % 4) / 3, float(a / 4 % 4) / 3, float(a / 16 % 4) / 3);
      apps[a]->setMaterial(m);
      apps[a]->setLightEnable(1);
      apps[a]->setDepthEnable(1);
    }
    root = new nrGroup;
    root->ref();
    int side = static_cast<int>(std::ceil(std::sqrt(double(shapes))));
    for (int i = 0; i < shapes; ++i) {
      nrTransform* t = new nrTransform;
      t->setTranslation(float(i % side) * 3 - side * 1.5f, float(i / side) * 3 - side * 1.5f, 0);
      t->setRotation(1, 1, 0, 0.01f * i);
      nrShape* shape = new nrShape;
      shape->setAppearance(apps[i % appearances]);
      shape->addGeometry(box);
      t->addChild(shape);
      root->addChild(t);
    }
    switches = appearances > 1 ? shapes : 1;
    for (int a = 0; a < appearances; ++a) apps[a]->unref();
    delete[] apps;

    camera = new nrPerspCamera;
    camera->ref();
    camera->setPosition(0, 0, side * 4.0f);
    camera->setFarClip(side * 10.0f);
    action = new nrDrawAction;
    action->ref();
    action->setCamera(camera);
  }
  ~Frame() {
    if (action) action->unref();
    if (camera) camera->unref();
    if (root) root->unref();
    if (context) context->unref();
    delete drawable;
  }
  void draw() {
    context->clear(nrContext::COLOR_CLEAR | nrContext::DEPTH_CLEAR);
    camera->draw(action);
    action->apply(root);
  }
  int needed(int shapes) const { return 7 + shapes * 6 + switches * 5; }
};

void BM_Frame(benchmark::State& state) {
  int shapes = static_cast<int>(state.range(0)), appearances = static_cast<int>(state.range(1));
  Frame frame(shapes, appearances);
  if (!frame.context) {
    state.SkipWithError("no offscreen OpenGL context");
    return;
  }
  frame.draw();  // the first frame sends what later frames keep
  for (auto _ : state) {
    frame.draw();
    nrgl::Finish();
  }
  nrGLRecorder recorder;
  frame.draw();
  // The clear is the frame's own work, not the scene's.
  double calls = double(recorder.calls().size()) - 1;
  state.counters["calls"] = calls;
  state.counters["needed"] = frame.needed(shapes);
  state.counters["ratio"] = calls / frame.needed(shapes);
}
BENCHMARK(BM_Frame)->Args({1000, 1})->Args({1000, 64})->Args({10000, 64})->Unit(benchmark::kMillisecond);

}  // namespace
