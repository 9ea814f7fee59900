// Abstract base of the primitive sets: attribute sets and their index lists,
// a binding per attribute, and the compact draw code derived from them that
// picks the draw routines and one of five drawing strategies.
#pragma once

#include <GL/gl.h>

#include "nerio3d/arrays/nrTypedArray.h"
#include "nerio3d/core/nrBitMask.h"
#include "nerio3d/geometry/nrGLAttrSet.h"
#include "nerio3d/geometry/nrGeometry.h"
#include "nerio3d/geometry/nrIndexSet.h"
#include "nerio3d/render/nrContext.h"

class nrColorSet;
class nrCoordSet;
class nrMFInt;
class nrNormalSet;
class nrTexCoordSet;
namespace nrDetail {
class nrPickTree;
}

class nrGeoSet : public nrGeometry {
  NR_DECLARE_TYPE(nrGeoSet)

  enum NormalBindEnum { NO_NORMAL, OVERALL_NORMAL, PER_PRIM_NORMAL, PER_VERTEX_NORMAL };
  enum ColorBindEnum { NO_COLOR, OVERALL_COLOR, PER_PRIM_COLOR, PER_VERTEX_COLOR };
  enum TexCoordBindEnum { NO_TEX_COORD, PER_VERTEX_TEX_COORD };
  enum {
    PRIM_COUNT_FIELD = 2,
    NORMAL_BIND_FIELD,
    COLOR_BIND_FIELD,
    TEX_COORD_BIND_FIELD,
    COORD_SET_FIELD,
    NORMAL_SET_FIELD,
    COLOR_SET_FIELD,
    TEX_COORD_SET_FIELD,
    COORD_INDEX_SET_FIELD,
    NORMAL_INDEX_SET_FIELD,
    COLOR_INDEX_SET_FIELD,
    TEX_COORD_INDEX_SET_FIELD,
    CULL_FACE_FIELD
  };
  // The draw code: bits 0-2 index the overall routines, 3-5 the per-primitive
  // ones, 6-8 the per-vertex and vertex-array ones, 9-11 hold the strategy.
  enum {
    OVERALL_NORMAL_BIT = 1 << 0,
    OVERALL_COLOR_BIT = 1 << 1,
    PER_PRIM_NORMAL_BIT = 1 << 3,
    PER_PRIM_COLOR_BIT = 1 << 4,
    PER_VERTEX_TEX_COORD_BIT = 1 << 6,
    PER_VERTEX_NORMAL_BIT = 1 << 7,
    PER_VERTEX_COLOR_BIT = 1 << 8,
    STRATEGY_SHIFT = 9
  };
  // Immediate mode; vertex arrays in one call; arrays with per-primitive
  // attributes; one shared index list in one call; shared indices with
  // per-primitive attributes.
  enum StrategyEnum { IMMEDIATE_STRATEGY, ARRAYS_STRATEGY, PRIM_ARRAYS_STRATEGY, ELEMENTS_STRATEGY, PRIM_ELEMENTS_STRATEGY };
  // User-set mask bits: the set's own cull face, line width and point size win once written.
  enum { CULL_FACE_SET_BIT = 29, LINE_WIDTH_SET_BIT = 30, POINT_SIZE_SET_BIT = 31 };

  typedef void (*DrawFunc)(nrGLAttrSet& attrs);

  explicit nrGeoSet(nrType* type);
  ~nrGeoSet() override;

  void setPrimCount(int count) { setValue(primCount, count, PRIM_COUNT_FIELD); }
  int getPrimCount() const { return getFieldValue(primCount, PRIM_COUNT_FIELD); }
  void setNormalBind(NormalBindEnum bind) { setValue(normalBind, int(bind), NORMAL_BIND_FIELD); }
  NormalBindEnum getNormalBind() const { return NormalBindEnum(getFieldValue(normalBind, NORMAL_BIND_FIELD)); }
  void setColorBind(ColorBindEnum bind) { setValue(colorBind, int(bind), COLOR_BIND_FIELD); }
  ColorBindEnum getColorBind() const { return ColorBindEnum(getFieldValue(colorBind, COLOR_BIND_FIELD)); }
  void setTexCoordBind(TexCoordBindEnum bind) { setValue(texCoordBind, int(bind), TEX_COORD_BIND_FIELD); }
  TexCoordBindEnum getTexCoordBind() const {
    return TexCoordBindEnum(getFieldValue(texCoordBind, TEX_COORD_BIND_FIELD));
  }
  void setCoordSet(nrCoordSet* set);
  nrCoordSet* getCoordSet() const;
  void setNormalSet(nrNormalSet* set);
  nrNormalSet* getNormalSet() const;
  void setColorSet(nrColorSet* set);
  nrColorSet* getColorSet() const;
  void setTexCoordSet(nrTexCoordSet* set);
  nrTexCoordSet* getTexCoordSet() const;
  void setCoordIndexSet(nrIndexSet* set) { setRef(coordIndexSet, set, COORD_INDEX_SET_FIELD); }
  nrIndexSet* getCoordIndexSet() const { return indexSet(coordIndexSet, COORD_INDEX_SET_FIELD); }
  void setNormalIndexSet(nrIndexSet* set) { setRef(normalIndexSet, set, NORMAL_INDEX_SET_FIELD); }
  nrIndexSet* getNormalIndexSet() const { return indexSet(normalIndexSet, NORMAL_INDEX_SET_FIELD); }
  void setColorIndexSet(nrIndexSet* set) { setRef(colorIndexSet, set, COLOR_INDEX_SET_FIELD); }
  nrIndexSet* getColorIndexSet() const { return indexSet(colorIndexSet, COLOR_INDEX_SET_FIELD); }
  void setTexCoordIndexSet(nrIndexSet* set) { setRef(texCoordIndexSet, set, TEX_COORD_INDEX_SET_FIELD); }
  nrIndexSet* getTexCoordIndexSet() const { return indexSet(texCoordIndexSet, TEX_COORD_INDEX_SET_FIELD); }
  // Once written (even to the value in force) the set's cull face replaces the context's.
  void setCullFace(nrContext::CullFaceEnum face) { setValue(cullFace, int(face), CULL_FACE_FIELD); }
  nrContext::CullFaceEnum getCullFace() const {
    return nrContext::CullFaceEnum(getFieldValue(cullFace, CULL_FACE_FIELD));
  }

  // The bindings in force: a field's binding while its attribute set is present, else none.
  NormalBindEnum getNormalBinding() const { return NormalBindEnum(normalBinding); }
  ColorBindEnum getColorBinding() const { return ColorBindEnum(colorBinding); }
  TexCoordBindEnum getTexCoordBinding() const { return TexCoordBindEnum(texCoordBinding); }
  // Recomputes the bindings in force and the draw code (every field change does).
  void calcBindings();
  using nrContainer::copy;
  // Copies the fields, which arrive without a change being signalled, and
  // then what is derived from them: user-set bits, bindings and draw code;
  // the BPCull settings and data are copied too.
  void copy(nrContainer* from, nrCloneTable* table) override;
  int getDrawCode() const { return drawCode; }
  StrategyEnum getStrategy() const { return StrategyEnum(drawCode >> STRATEGY_SHIFT); }
  const nrBitMask& getUserSetMask() const { return userSet; }
  // The display list that compiled drawing replays, -1 when none.
  int getDisplayListId() const { return displayListId; }
  // Raised by every change of a field or of an attribute or index set.
  int getVersion() const { return version; }

  // Vertices of primitive prim; 0 in the base, -1 past the lengths given.
  virtual int getPrimLen(int) { return 0; }
  // Triangle t of a primitive of count vertices from firstVertex, as vertex
  // numbers wound like the primitive; false when it has no triangle t. Picking
  // and the face normals of culling walk primitives through it.
  virtual bool getPrimTri(int, int, int, int[3]) { return false; }

  void draw(nrDrawAction* action) override;
  // Picks the triangles of the primitives (getPrimTri) under the set's own
  // cull face; nothing under BOTH_CULL. Sets of more than a few triangles
  // are picked through a tree of boxes, built on the first pick and again
  // after a change, which finds exactly the hit of testing every triangle.
  // Returns 1 when the action kept a hit on the set.
  int isect(nrIsectAction* action) override;
  void calcBound(nrBoxBound& box) override;
  // Skips the primitives that face away (isPrimBpcFrontFacing), else as drawWithoutBpc.
  void drawWithBpc(nrDrawAction* action);
  void drawWithoutBpc(nrDrawAction* action);

  // Fills attrs for one draw and applies the set's state to context (with the
  // context's recording off): the colour routines (screen-door ones under
  // stipple transparency), white for colour material without colours, and
  // the cull face. False when there is nothing to draw.
  virtual bool beginDraw(nrGLAttrSet& attrs, nrContext* context);

  // Walks the VRML index list: values are appended to out, each negative value
  // ends a primitive whose vertex count goes to primLengths. Returns the number
  // of lengths written (0 without primLengths). out and primLengths are replaced.
  static int flattenVRMLIndices(nrMFInt* vrmlIndices, nrIndexSet* out, nrMFInt* primLengths);
  // Extends box by the coordinates of the first primCount primitives: primLen
  // vertices each, or as many as primLengths gives.
  void boundCoords(nrBoxBound& box, int primLen, const nrIntArray* primLengths);

  // Per-primitive back-face culling on the processor: each primitive keeps a
  // reference point and a cone around its normals (axis and threshold).
  void buildBPCullData();
  int existsBPCullData() const { return bpcPoint != nullptr; }
  void setBPCullDynamicBuildMode(unsigned char on) { bpcDynamicBuild = on; }
  unsigned char getBPCullDynamicBuildMode() const { return bpcDynamicBuild; }
  virtual void setBPCullPrimNormModeEnable(unsigned char on) { bpcPrimNormMode = on; }
  virtual unsigned char getBPCullPrimNormModeEnable() { return bpcPrimNormMode; }
  nrVec3fArray* getBPCullPoint() const { return bpcPoint; }
  nrVec3fArray* getBPCullCenter() const { return bpcCenter; }
  nrFloatArray* getBPCullDelta() const { return bpcDelta; }
  // The set takes ownership of the arrays given.
  void setBPCullPoint(nrVec3fArray* points);
  void setBPCullCenter(nrVec3fArray* axes);
  void setBPCullDelta(nrFloatArray* thresholds);
  void setBPCullEpsilon(float epsilon) { bpcEpsilon = epsilon; }
  float getBPCullEpsilon() const { return bpcEpsilon; }
  // True without culling data; else whether the primitive's normal cone
  // reaches the viewer of action.
  bool isPrimBpcFrontFacing(int prim, nrDrawAction* action);
  void bpcBuildDataPrim(int prim, int firstVertex, int count, nrVec3f& point, nrVec3f& axis, float& delta);
  // Coordinate of the primitive's first vertex.
  nrVec3f getRefPoint(int prim, int firstVertex, int count);
  // Box of the normals of count vertices from firstVertex.
  void getNormBB(int firstVertex, int count, nrVec3f& min, nrVec3f& max);
  // Box of the normals the primitive is drawn with, whatever their binding.
  void getPrimNormBB(int prim, int firstVertex, int count, nrVec3f& min, nrVec3f& max);
  // Box of the normals of the primitive's triangles (getPrimTri), degenerate
  // ones left out; zero when it has none, so that it is never culled.
  virtual void getPrimFaceNormBB(int prim, int firstVertex, int count, nrVec3f& min, nrVec3f& max);
  // Threshold of the cone around axis holding every normal of the box: -2
  // when it opens beyond a half space, 0 when it is a single direction.
  float getNormBBDelta(const nrVec3f& min, const nrVec3f& max, const nrVec3f& axis);
  static void getTriNormal(const nrVec3f& a, const nrVec3f& b, const nrVec3f& c, nrVec3f& normal);

  // The routine families. Overall and per-primitive routines send the colour
  // and/or normal; per-vertex ones send colour, normal, texture coordinate
  // (as their suffix says) and the coordinate; vertex-array ones set up the arrays.
  static void overallDrawN(nrGLAttrSet& attrs);
  static void overallDrawC(nrGLAttrSet& attrs);
  static void overallDrawCN(nrGLAttrSet& attrs);
  static void overallDrawCScrDoor(nrGLAttrSet& attrs);
  static void overallDrawCNScrDoor(nrGLAttrSet& attrs);
  static void perPrimDrawN(nrGLAttrSet& attrs);
  static void perPrimDrawC(nrGLAttrSet& attrs);
  static void perPrimDrawCN(nrGLAttrSet& attrs);
  static void perPrimDrawCScrDoor(nrGLAttrSet& attrs);
  static void perPrimDrawCNScrDoor(nrGLAttrSet& attrs);
  static void perVertDraw0(nrGLAttrSet& attrs);
  static void perVertDrawT(nrGLAttrSet& attrs);
  static void perVertDrawN(nrGLAttrSet& attrs);
  static void perVertDrawNT(nrGLAttrSet& attrs);
  static void perVertDrawC(nrGLAttrSet& attrs);
  static void perVertDrawCT(nrGLAttrSet& attrs);
  static void perVertDrawCN(nrGLAttrSet& attrs);
  static void perVertDrawCNT(nrGLAttrSet& attrs);
  static void vertArrayDraw0(nrGLAttrSet& attrs);
  static void vertArrayDrawT(nrGLAttrSet& attrs);
  static void vertArrayDrawN(nrGLAttrSet& attrs);
  static void vertArrayDrawNT(nrGLAttrSet& attrs);
  static void vertArrayDrawC(nrGLAttrSet& attrs);
  static void vertArrayDrawCT(nrGLAttrSet& attrs);
  static void vertArrayDrawCN(nrGLAttrSet& attrs);
  static void vertArrayDrawCNT(nrGLAttrSet& attrs);
  void fieldChanged(short index) override;
  void childChanged(nrContainer* child, short index) override;

 protected:
  // The primitives, after beginDraw filled attrs; bpcAction is the viewer
  // whose back-facing primitives are skipped, or null.
  virtual void drawGeometry(nrGLAttrSet&, nrDrawAction*) {}
  // Primitives of primLen vertices each: one begin/end pair in immediate
  // mode, one array call for strategies 1 and 3.
  void drawFixed(nrGLAttrSet& attrs, GLenum mode, int primLen, nrDrawAction* bpcAction);
  // Primitives of the lengths given: one begin/end pair or one call each.
  void drawLengths(nrGLAttrSet& attrs, GLenum mode, const nrIntArray& lengths, nrDrawAction* bpcAction);
  // Draws through the display list once one is allocated (strips and fans).
  void drawCompiled(nrDrawAction* action);
  // Records the display list, taking an id first when the set has none.
  void compileList(nrCompileAction* action);
  // Line width and point size, from the set's field once written (the bit of
  // userSet), else from the application's state; recording is off meanwhile.
  void applyLineWidth(nrContext* context, float width);
  void applyPointSize(nrContext* context, float size);
  // Triangle t of a fan (or convex polygon) around its first vertex.
  static bool fanTri(int firstVertex, int count, int t, int v[3]);
  // Sends the overall attributes, and sets up the vertex arrays for strategies 1-4.
  void startPrims(nrGLAttrSet& attrs);
  // Moves the cursors of attrs past a primitive of count vertices that is not drawn.
  void skipPrim(nrGLAttrSet& attrs, int count);

  // Points an attribute's index set field (member, index setField) at own,
  // made on first need and filled from the VRML list, or at the coordinates'
  // index set itself when the list is empty, so that the attribute follows them.
  void indexAttribute(nrMFInt* list, nrIndexSet*& own, nrContainer*& member, short setField);
  // Copies from as nrContainer::copy does, with its user-set bits, but
  // keeps index sets to itself: this set ends with a new, empty coordinate
  // index set and no others, for the index lists to fill again.
  void copyWithOwnIndexSets(nrContainer* from, nrCloneTable* table);
  // VRML text: the header, the attribute sets under their VRML names, the
  // fields listed that differ from their defaults, and "}".
  // keptFlag: a flag field written even at its default value (-1 for none).
  void writeVRML(nrOutput* out, const short* ownFields, int count, short keptFlag = -1);

  // The number of primitives whose data is all present, from primCount,
  // the lengths and the attribute and index sets; recomputed after a change.
  int getDrawablePrimCount();
  // The coordinate of vertex v (through the index list when there is one).
  nrVec3f getCoord(int v);

  void setRef(nrContainer*& member, nrContainer* value, short index);
  nrIndexSet* indexSet(nrContainer* const& member, short index) const;

  int primCount;
  int normalBind;
  int colorBind;
  int texCoordBind;
  nrContainer* coordSet;
  nrContainer* normalSet;
  nrContainer* colorSet;
  nrContainer* texCoordSet;
  nrContainer* coordIndexSet;
  nrContainer* normalIndexSet;
  nrContainer* colorIndexSet;
  nrContainer* texCoordIndexSet;
  int cullFace;

  unsigned char normalBinding;
  unsigned char colorBinding;
  unsigned char texCoordBinding;
  unsigned short drawCode;
  nrBitMask userSet;
  int displayListId;
  int version;

  nrVec3fArray* bpcPoint;
  nrVec3fArray* bpcCenter;
  nrFloatArray* bpcDelta;
  unsigned char bpcDynamicBuild;
  unsigned char bpcPrimNormMode;
  float bpcEpsilon;

  // Routines chosen from the draw code (and, for colours, by beginDraw).
  DrawFunc overallDraw;
  DrawFunc perPrimDraw;
  DrawFunc perVertDraw;
  DrawFunc vertArrayDraw;

 private:
  void drawPrims(nrGLAttrSet& attrs, GLenum mode, int primLen, const int* lengths, nrDrawAction* bpcAction);
  // Records the geometry into the set's display list (an empty list when it
  // cannot be drawn).
  void recordList(nrGLAttrSet& attrs, bool drawable);
  // Extends box by the first vertices coordinates that exist.
  void boundVertices(nrBoxBound& box, int vertices);
  void freeBPCullData();
  // Takes the BPCull settings of from, and copies of its culling data.
  void copyBPCull(nrContainer* from);
  // The triangles of the drawable primitives, with the first triangle of
  // each primitive, as the pick tree takes them; null under SMALL_PICK_SET.
  nrDetail::nrPickTree* buildPickTree(const nrGLAttr& coords, const int* index);

  int drawablePrims;
  bool drawableStale;
  nrDetail::nrPickTree* pickTree;
};
