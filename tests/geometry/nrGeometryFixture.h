// A context on a 64 x 64 offscreen drawable looking at the square [-1, 1]²
// with identity matrices, a draw action into it, and builders of small sets.
#pragma once

#include <algorithm>
#include <cmath>
#include <initializer_list>
#include <map>

#include "../render/nrRenderFixture.h"
#include "nerio3d/actions/nrDrawAction.h"
#include "nerio3d/actions/nrIsectAction.h"
#include "nerio3d/geometry/nrColorSet3f.h"
#include "nerio3d/geometry/nrCoordSet3f.h"
#include "nerio3d/geometry/nrIndexSet.h"
#include "nerio3d/geometry/nrNormalSet3f.h"
#include "nerio3d/geometry/nrShape.h"

namespace nrtest {

class GeometryTest : public ContextTest {
 protected:
  enum { SIZE = 64 };

  void SetUp() override {
    ContextTest::SetUp();
    action = held<nrDrawAction>();
    action->setContext(context);
    nrgl::ClearColor(0, 0, 0, 1);
    nrgl::Clear(GL_COLOR_BUFFER_BIT);
  }
  void TearDown() override {
    for (nrObject* o : owned) o->unref();
    action->unref();
    ContextTest::TearDown();
  }

  // Held for the test's length.
  template <typename T>
  T* keep(T* object) {
    object->ref();
    owned.push_back(object);
    return object;
  }
  template <typename T>
  T* make() { return keep(new T); }
  // A new attribute set of type S holding values.
  template <typename S, typename V>
  S* filled(std::initializer_list<V> values) {
    S* set = make<S>();
    for (const V& v : values) set->append(v);
    return set;
  }
  nrCoordSet3f* coords(std::initializer_list<nrVec3f> v) { return filled<nrCoordSet3f>(v); }
  nrColorSet3f* colors(std::initializer_list<nrVec3f> v) { return filled<nrColorSet3f>(v); }
  nrNormalSet3f* normals(std::initializer_list<nrVec3f> v) { return filled<nrNormalSet3f>(v); }
  nrIndexSet* indices(std::initializer_list<int> v) { return filled<nrIndexSet>(v); }
  // A set of type T over points with primCount primitives.
  template <typename T>
  T* set(nrCoordSet3f* points, int primCount) {
    T* s = make<T>();
    s->setCoordSet(points);
    s->setPrimCount(primCount);
    return s;
  }
  template <typename T>
  T* set(std::initializer_list<nrVec3f> points, int primCount) { return set<T>(coords(points), primCount); }

  nrShape* shapeOf(nrGeometry* g, nrAppearance* app = nullptr) {
    nrShape* s = make<nrShape>();
    s->addGeometry(g);
    if (app) s->setAppearance(app);
    return s;
  }
  // The hit of the segment from `from` to `to` through root.
  static nrHit pickBetween(nrNode* root, const nrVec3f& from, const nrVec3f& to) {
    nrIsectAction pick;
    nrSeg seg;
    seg.makePts(from, to);
    pick.setSeg(seg);
    pick.apply(root);
    return pick.getHit();
  }

  // The frame as RGBA words, bottom row first; clear() wipes it.
  std::vector<uint32_t> frame() {
    std::vector<uint32_t> pixels(SIZE * SIZE);
    nrgl::ReadPixels(0, 0, SIZE, SIZE, GL_RGBA, GL_UNSIGNED_BYTE, pixels.data());
    return pixels;
  }
  void clearFrame() { nrgl::Clear(GL_COLOR_BUFFER_BIT); }
  uint32_t pixel(int x, int y) { return frame()[y * SIZE + x]; }
  // Pixels of each colour in the frame.
  std::map<uint32_t, int> histogram() {
    std::map<uint32_t, int> counts;
    for (uint32_t p : frame()) ++counts[p];
    return counts;
  }
  // The recorded calls whose text starts with one of prefixes.
  static Calls only(const nrGLRecorder& rec, std::initializer_list<const char*> prefixes) {
    Calls kept;
    for (const std::string& call : rec.calls())
      if (std::any_of(prefixes.begin(), prefixes.end(), [&](const char* p) { return call.rfind(p, 0) == 0; }))
        kept.push_back(call);
    return kept;
  }
  // The calls starting with one of prefixes that one draw of g makes.
  template <typename T>
  Calls drawn(T* g, std::initializer_list<const char*> prefixes = {"glDraw"}) {
    nrGLRecorder rec;
    g->draw(action);
    return only(rec, prefixes);
  }

  static constexpr uint32_t BLACK = 0xff000000, RED = 0xff0000ff, GREEN = 0xff00ff00, BLUE = 0xffff0000;

  nrDrawAction* action = nullptr;
  std::vector<nrObject*> owned;
};

// The same on a larger drawable, for whole scenes seen by a perspective
// camera at z = 10 with its default height angle.
class SceneTest : public GeometryTest {
 protected:
  enum { W = 192 };

  void SetUp() override {
    GeometryTest::SetUp();
    big = nrDrawable::createOffscreen(W, W);
    ASSERT_NE(big, nullptr);
    context->makeCurrent(big);
    context->setViewport(0, 0, W, W);
  }
  void TearDown() override {
    GeometryTest::TearDown();
    delete big;
  }

  void readFrame() {
    pixels.resize(W * W);
    nrgl::ReadPixels(0, 0, W, W, GL_RGBA, GL_UNSIGNED_BYTE, pixels.data());
  }
  // The pixel read last where the point (x, y, 0) shows.
  uint32_t at(float x, float y) const {
    const float perUnit = W / (2 * 10 * std::tan(float(M_PI) / 8));
    return pixels[int(W / 2 + y * perUnit) * W + int(W / 2 + x * perUnit)];
  }

  nrDrawable* big = nullptr;
  std::vector<uint32_t> pixels;
};

}  // namespace nrtest
