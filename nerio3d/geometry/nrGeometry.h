// Abstract base of everything a shape can draw: a cached bounding box, kept
// as set or recomputed from the contents, and the drawing and picking entries.
#pragma once

#include <cmath>

#include "nerio3d/fields/nrContainer.h"
#include "nerio3d/math/nrBoxBound.h"
#include "nerio3d/math/nrSeg.h"
#include "nerio3d/math/nrVec3f.h"

class nrCompileAction;
class nrContext;
class nrDrawAction;
class nrGeoSet;
class nrIsectAction;

class nrGeometry : public nrContainer {
  NR_DECLARE_TYPE(nrGeometry)

  enum BoundModeEnum { STATIC = 0, DYNAMIC = 1 };
  enum { BOX_BOUND_FIELD = 0, BOUND_MODE_FIELD = 1 };

  explicit nrGeometry(nrType* type);
  ~nrGeometry() override;

  virtual void draw(nrDrawAction*) {}
  // Picks the box: a hit where the segment enters it, facing the segment.
  // Returns 1 when the action kept the hit (as every override does).
  virtual int isect(nrIsectAction* action);
  virtual void compile(nrCompileAction*) {}
  // The box around the contents, in the geometry's own coordinates.
  virtual void calcBound(nrBoxBound&) {}

  // Picks triangle a b c (counter-clockwise seen from its front) as primitive
  // primIndex: a segment meeting its back passes under BACK_CULL, one meeting
  // its front under FRONT_CULL. Returns 1 when the action kept the hit.
  // Whether the action's segment meets the box; t, when given, is where it enters.
  int isectBox(nrIsectAction* action, float* t = nullptr);
  int isectTri(nrIsectAction* action, const nrVec3f& a, const nrVec3f& b, const nrVec3f& c, int cullFace,
               int primIndex);
  // The test of isectTri without reporting: true when seg meets the triangle
  // at a distance t no further than maxT, with the triangle's unit normal.
  // Every triangle pick goes through it, so all agree to the last bit.
  static bool hitTri(const nrSeg& seg, float maxT, const nrVec3f& a, const nrVec3f& b, const nrVec3f& c,
                     int cullFace, float& t, nrVec3f& normal);

  void setBoxBound(const nrBoxBound& box);
  // The box, recomputed first when the contents changed in DYNAMIC mode.
  void getBoxBound(nrBoxBound& box) const;
  const nrBoxBound& getBoxBound() const;
  void setBoundMode(BoundModeEnum mode);
  BoundModeEnum getBoundMode() const;
  void fieldChanged(short index) override;
  // A box copied from geometry of another kind does not fit these contents:
  // in DYNAMIC mode it is recomputed.
  void copy(nrContainer* from, nrCloneTable* table) override;
  using nrContainer::copy;
  void cleanSideEffect(short index) override;

 protected:
  // Brings the pending fields up to date, as drawing and picking do first.
  void cleanPendingFields() {
    nrBitMask pending = getSideEffectMask() | getStaleInputMask();
    if (!pending.isZero()) cleanFieldsForUse(pending);
  }
  // Cleans the pending fields given; a subclass leaves out those that it
  // makes only when they are read, which drawing and picking never do.
  virtual void cleanFieldsForUse(const nrBitMask& pending) { internalCleanFields(pending); }
  // Every pending field, as writing and copying need them.
  void cleanAllFields() { nrContainer::cleanPendingFields(); }
  // The contents changed: in DYNAMIC mode the box is recomputed when next read
  // and the referring shapes learn that it changed.
  void boundChanged() {
    if (boundMode == DYNAMIC) propagateSideEffect(BOX_BOUND_FIELD);
  }
  // Field setters and getters of subclasses: store and report, or validate and read.
  template <typename T>
  void setValue(T& member, const T& value, short index) {
    member = value;
    fieldChanged(index);
  }
  // The nearest surface point a solid's exact pick found: the distance along
  // the segment, the part of the solid (its primitive) and the normal there.
  struct SolidHit {
    float t = -1;
    int part = -1;
    nrVec3f normal;
    // Keeps (t, part, normal) when t lies ahead and is nearer than the kept one.
    void offer(float t, int part, const nrVec3f& normal);
    // A disc of radius at height y facing ny (+1 or -1), met by o + t d.
    void offerCap(const nrVec3f& o, const nrVec3f& d, float y, float radius, int part, float ny);
  };
  // Hands the kept point, if any, to the action; 1 when the action kept it.
  int reportHit(nrIsectAction* action, const SolidHit& hit);
  // The real roots t0 <= t1 of a t^2 + b t + c = 0 (one root twice when a is
  // zero); false when there are none.
  static bool solveQuadratic(float a, float b, float c, float& t0, float& t1);
  // The context drawn into: the action's, else the thread's current one.
  static nrContext* contextOf(nrDrawAction* action);
  // The box of half-extents half around center.
  // A negative extent draws the solid mirrored: the box holds it all the same.
  static void boxAround(nrBoxBound& box, const nrVec3f& center, const nrVec3f& half) {
    nrVec3f extent(std::fabs(half[0]), std::fabs(half[1]), std::fabs(half[2]));
    box.min.sub(center, extent);
    box.max.add(center, extent);
  }
  // Solids carry no colours: colour material is switched off, and they are
  // culled like sets that leave the cull face to the application (recording off).
  static void beginSolid(nrContext* context);
  // Draws the parts that are on of a solid's shared unit tessellation, moved
  // to center and scaled by scale under a pushed matrix when they differ
  // from the unit, with normalising on while scaled. The parts never change,
  // so each is compiled into a display list on its first draw.
  static void drawUnitParts(nrDrawAction* action, const nrVec3f& center, const nrVec3f& scale,
                            nrGeoSet* const* parts, const unsigned char* on, int count);

  nrBoxBound boxBound;
  int boundMode;
};
