#include "nerio3d/geometry/nrGeoSet.h"

#include <algorithm>
#include <climits>
#include <cmath>
#include <cstdio>
#include <initializer_list>
#include <memory>
#include <vector>

#include "nerio3d/actions/nrCompileAction.h"
#include "nerio3d/actions/nrDrawAction.h"
#include "nerio3d/actions/nrIsectAction.h"
#include "nerio3d/fields/nrMField.h"
#include "nerio3d/fields/nrSFRef.h"
#include "nerio3d/fields/nrSField.h"
#include "nerio3d/geometry/nrColorSet3f.h"
#include "nerio3d/geometry/nrCoordSet3f.h"
#include "nerio3d/geometry/nrIndexSet.h"
#include "nerio3d/geometry/nrNormalSet3f.h"
#include "nerio3d/geometry/nrPickTree.h"
#include "nerio3d/geometry/nrTexCoordSet2f.h"
#include "nerio3d/render/_nrGfx.h"
#include "nerio3d/render/nrGL.h"
#include "nerio3d/render/nrMaterial.h"

namespace {

// On while a set records its display list on this thread.
thread_local bool recordingList = false;

// The triangles of n strips or fans of the lengths given, as vertex numbers
// (through elements when given) in the order OpenGL forms them, so that
// winding and the provoking last corner are kept; false, with out left
// incomplete, when a length is negative.
bool triangleIndices(GLenum mode, int n, const int* lengths, const GLuint* elements, std::vector<GLuint>& out) {
  auto vertex = [elements](int v) { return elements ? elements[v] : GLuint(v); };
  for (int p = 0, first = 0; p < n; first += lengths[p++]) {
    if (lengths[p] < 0) return false;
    for (int v = first + 2; v < first + lengths[p]; ++v) {
      bool odd = mode == GL_TRIANGLE_STRIP && (v - first) % 2;
      out.push_back(vertex(mode == GL_TRIANGLE_FAN ? first : odd ? v - 1 : v - 2));
      out.push_back(vertex(mode == GL_TRIANGLE_FAN ? v - 1 : odd ? v - 2 : v - 1));
      out.push_back(vertex(v));
    }
  }
  return true;
}

// Routine-table index bits: colour, normal, texture coordinate.
enum { C = 4, N = 2, T = 1 };

template <int Attrs>
void perVert(nrGLAttrSet& a) {
  if (Attrs & C) a.color.sendNext();
  if (Attrs & N) a.normal.sendNext();
  if (Attrs & T) a.texCoord.sendNext();
  a.coord.sendNext();
}

template <int Attrs>
void vertArray(nrGLAttrSet& a) {
  unsigned arrays = nrContext::CLIENT_VERTEX_ARRAY;
  if (Attrs & C) arrays |= nrContext::CLIENT_COLOR_ARRAY;
  if (Attrs & N) arrays |= nrContext::CLIENT_NORMAL_ARRAY;
  if (Attrs & T) arrays |= nrContext::CLIENT_TEX_COORD_ARRAY;
  if (a.context) {
    a.context->setClientArrays(arrays);
  } else {
    if (Attrs & C) nrgl::EnableClientState(GL_COLOR_ARRAY);
    if (Attrs & N) nrgl::EnableClientState(GL_NORMAL_ARRAY);
    if (Attrs & T) nrgl::EnableClientState(GL_TEXTURE_COORD_ARRAY);
    nrgl::EnableClientState(GL_VERTEX_ARRAY);
  }
  if (Attrs & C) nrgl::ColorPointer(a.color.size, a.color.type, a.color.stride, a.color.data);
  if (Attrs & N) nrgl::NormalPointer(a.normal.type, a.normal.stride, a.normal.data);
  if (Attrs & T) nrgl::TexCoordPointer(a.texCoord.size, a.texCoord.type, a.texCoord.stride, a.texCoord.data);
  nrgl::VertexPointer(a.coord.size, a.coord.type, a.coord.stride, a.coord.data);
}

// Screen-door opacity: the fourth byte of the colour element as a signed
// integer, unscaled, clamped to [0, 1]; so only 0 and 1 ever select a pattern.
// This byte is what the colour routines have always read; it is kept as is.
void stippleFor(const nrGLAttr& color) {
  float value = static_cast<float>(static_cast<signed char>(color.current()[3]));
  if (value < 0) value = 0;
  if (value > 1) value = 1;
  nrgl::PolygonStipple(nrMaterial::_ditherMatrix[static_cast<int>((1 - value) * 1024 + 0.5f)]);
}

void sendCurrent(const nrGLAttr& a) { a.send(a.current()); }

const nrGeoSet::DrawFunc overallFuncs[8] = {nullptr, nrGeoSet::overallDrawN, nrGeoSet::overallDrawC,
                                            nrGeoSet::overallDrawCN};
const nrGeoSet::DrawFunc overallScrDoorFuncs[8] = {nullptr, nrGeoSet::overallDrawN, nrGeoSet::overallDrawCScrDoor,
                                                   nrGeoSet::overallDrawCNScrDoor};
const nrGeoSet::DrawFunc perPrimFuncs[8] = {nullptr, nrGeoSet::perPrimDrawN, nrGeoSet::perPrimDrawC,
                                            nrGeoSet::perPrimDrawCN};
const nrGeoSet::DrawFunc perPrimScrDoorFuncs[8] = {nullptr, nrGeoSet::perPrimDrawN, nrGeoSet::perPrimDrawCScrDoor,
                                                   nrGeoSet::perPrimDrawCNScrDoor};
const nrGeoSet::DrawFunc perVertFuncs[8] = {
    nrGeoSet::perVertDraw0, nrGeoSet::perVertDrawT,  nrGeoSet::perVertDrawN,  nrGeoSet::perVertDrawNT,
    nrGeoSet::perVertDrawC, nrGeoSet::perVertDrawCT, nrGeoSet::perVertDrawCN, nrGeoSet::perVertDrawCNT};
const nrGeoSet::DrawFunc vertArrayFuncs[8] = {
    nrGeoSet::vertArrayDraw0, nrGeoSet::vertArrayDrawT,  nrGeoSet::vertArrayDrawN,  nrGeoSet::vertArrayDrawNT,
    nrGeoSet::vertArrayDrawC, nrGeoSet::vertArrayDrawCT, nrGeoSet::vertArrayDrawCN, nrGeoSet::vertArrayDrawCNT};

const int* indicesOf(nrContainer* set) {
  return set ? static_cast<nrIndexSet*>(set)->getArray().getArray() : nullptr;
}

// Element e of an attribute stream as three floats (shorts scaled to unit length).
nrVec3f elementOf(const nrGLAttr& a, int e) {
  const unsigned char* p = a.data + a.stride * e;
  if (a.type == GL_SHORT) {
    const short* s = reinterpret_cast<const short*>(p);
    return nrVec3f(s[0] / 32767.0f, s[1] / 32767.0f, s[2] / 32767.0f);
  }
  const float* f = reinterpret_cast<const float*>(p);
  return nrVec3f(f[0], f[1], f[2]);
}

// One attribute as the validity check of the drawable primitives sees it.
struct AttrLimit {
  int count = 0;
  const int* index = nullptr;
  int indexCount = 0;

  void from(nrContainer* set, unsigned (*countOf)(nrContainer*), nrContainer* indexSet) {
    count = static_cast<int>(countOf(set));
    if (!indexSet) return;
    const nrIntArray& a = static_cast<nrIndexSet*>(indexSet)->getArray();
    index = a.getArray();
    indexCount = static_cast<int>(a.getCount());
  }
  // Element number i of the stream exists.
  bool has(int i) const {
    if (index) {
      if (i < 0 || i >= indexCount) return false;
      i = index[i];
    }
    return i >= 0 && i < count;
  }
  // Elements 0 to n - 1 all exist: one pass without early exits.
  bool hasFirst(long n) const {
    if (!index) return n <= count;
    if (n > indexCount) return false;
    unsigned bad = 0;
    for (long i = 0; i < n; ++i) bad |= unsigned(index[i]) >= unsigned(count);
    return !bad;
  }
};

template <typename Set>
unsigned countOf(nrContainer* set) {
  return static_cast<Set*>(set)->getCount();
}

// Element e of an attribute set through its index set; the origin where the
// data does not reach (no set, an index or element past the end).
template <typename Set>
nrVec3f elementAt(nrContainer* set, nrContainer* indexSet, int e) {
  AttrLimit limit;
  if (set) limit.from(set, countOf<Set>, indexSet);
  if (!limit.has(e)) return nrVec3f(0, 0, 0);
  nrGLAttr a;
  static_cast<Set*>(set)->getGLAttr(a);
  return elementOf(a, limit.index ? limit.index[e] : e);
}

}  // namespace

NR_DEFINE_TYPE(nrGeoSet, nrGeometry, "GeoSet") {
  nrSFInt::addTypeField(type, "primCount", PRIM_COUNT_FIELD, 0, &nrGeoSet::primCount);
  nrSFEnum::addTypeField(type, "normalBind", NORMAL_BIND_FIELD, NO_NORMAL, &nrGeoSet::normalBind);
  nrSFEnum::addTypeField(type, "colorBind", COLOR_BIND_FIELD, NO_COLOR, &nrGeoSet::colorBind);
  nrSFEnum::addTypeField(type, "texCoordBind", TEX_COORD_BIND_FIELD, NO_TEX_COORD, &nrGeoSet::texCoordBind);
  nrSFRef::addTypeField(type, "coordSet", COORD_SET_FIELD, nrCoordSet::getClassType(), &nrGeoSet::coordSet);
  nrSFRef::addTypeField(type, "normalSet", NORMAL_SET_FIELD, nrNormalSet::getClassType(), &nrGeoSet::normalSet);
  nrSFRef::addTypeField(type, "colorSet", COLOR_SET_FIELD, nrColorSet::getClassType(), &nrGeoSet::colorSet);
  nrSFRef::addTypeField(type, "texCoordSet", TEX_COORD_SET_FIELD, nrTexCoordSet::getClassType(),
                        &nrGeoSet::texCoordSet);
  nrType* indexType = nrIndexSet::getClassType();
  nrSFRef::addTypeField(type, "coordIndexSet", COORD_INDEX_SET_FIELD, indexType, &nrGeoSet::coordIndexSet);
  nrSFRef::addTypeField(type, "normalIndexSet", NORMAL_INDEX_SET_FIELD, indexType, &nrGeoSet::normalIndexSet);
  nrSFRef::addTypeField(type, "colorIndexSet", COLOR_INDEX_SET_FIELD, indexType, &nrGeoSet::colorIndexSet);
  nrSFRef::addTypeField(type, "texCoordIndexSet", TEX_COORD_INDEX_SET_FIELD, indexType, &nrGeoSet::texCoordIndexSet);
  nrSFEnum::addTypeField(type, "cullFace", CULL_FACE_FIELD, nrContext::BACK_CULL, &nrGeoSet::cullFace);

  type->getFieldInfo(COORD_SET_FIELD)->addAlias("coord");
  type->getFieldInfo(NORMAL_SET_FIELD)->addAlias("normal");
  type->getFieldInfo(COLOR_SET_FIELD)->addAlias("color");
  type->getFieldInfo(TEX_COORD_SET_FIELD)->addAlias("texCoord");

  const char* normalNames[] = {"NO_NORMAL", "OVERALL_NORMAL", "PER_PRIM_NORMAL", "PER_VERTEX_NORMAL"};
  const char* colorNames[] = {"NO_COLOR", "OVERALL_COLOR", "PER_PRIM_COLOR", "PER_VERTEX_COLOR"};
  const char* texCoordNames[] = {"NO_TEX_COORD", "PER_VERTEX_TEX_COORD"};
  const char* cullNames[] = {"NO_CULL", "FRONT_CULL", "BACK_CULL", "BOTH_CULL"};
  const int values[] = {0, 1, 2, 3};
  type->defineEnums(NORMAL_BIND_FIELD, 4, normalNames, values);
  type->defineEnums(COLOR_BIND_FIELD, 4, colorNames, values);
  type->defineEnums(TEX_COORD_BIND_FIELD, 2, texCoordNames, values);
  type->defineEnums(CULL_FACE_FIELD, 4, cullNames, values);
}

nrGeoSet::nrGeoSet(nrType* type)
    : nrGeometry(type),
      normalBinding(NO_NORMAL),
      colorBinding(NO_COLOR),
      texCoordBinding(NO_TEX_COORD),
      drawCode(0),
      displayListId(-1),
      version(0),
      bpcPoint(nullptr),
      bpcCenter(nullptr),
      bpcDelta(nullptr),
      bpcDynamicBuild(1),
      bpcPrimNormMode(0),
      bpcEpsilon(0.000001f),
      overallDraw(nullptr),
      perPrimDraw(nullptr),
      perVertDraw(nullptr),
      vertArrayDraw(nullptr),
      drawablePrims(0),
      drawableStale(true),
      pickTree(nullptr) {
  initFieldDefaults(getClassType());
  calcBindings();
}

nrGeoSet::~nrGeoSet() {
  // The id goes back to the shared pool; whoever takes it next rebuilds its list.
  if (displayListId >= 1) nrContext::freeId(displayListId, 1);
  displayListId = -1;
  freeBPCullData();
  delete pickTree;
  destroyFieldContents(getClassType());
}

// ---- fields ----

void nrGeoSet::setCoordSet(nrCoordSet* set) { setRef(coordSet, set, COORD_SET_FIELD); }
nrCoordSet* nrGeoSet::getCoordSet() const { return static_cast<nrCoordSet*>(getFieldValue(coordSet, COORD_SET_FIELD)); }
void nrGeoSet::setNormalSet(nrNormalSet* set) { setRef(normalSet, set, NORMAL_SET_FIELD); }
nrNormalSet* nrGeoSet::getNormalSet() const {
  return static_cast<nrNormalSet*>(getFieldValue(normalSet, NORMAL_SET_FIELD));
}
void nrGeoSet::setColorSet(nrColorSet* set) { setRef(colorSet, set, COLOR_SET_FIELD); }
nrColorSet* nrGeoSet::getColorSet() const { return static_cast<nrColorSet*>(getFieldValue(colorSet, COLOR_SET_FIELD)); }
void nrGeoSet::setTexCoordSet(nrTexCoordSet* set) { setRef(texCoordSet, set, TEX_COORD_SET_FIELD); }
nrTexCoordSet* nrGeoSet::getTexCoordSet() const {
  return static_cast<nrTexCoordSet*>(getFieldValue(texCoordSet, TEX_COORD_SET_FIELD));
}

void nrGeoSet::setRef(nrContainer*& member, nrContainer* value, short index) {
  refer(member, value);
  member = value;
  fieldChanged(index);
}

nrIndexSet* nrGeoSet::indexSet(nrContainer* const& member, short index) const {
  return static_cast<nrIndexSet*>(getFieldValue(member, index));
}

void nrGeoSet::fieldChanged(short index) {
  if (index < PRIM_COUNT_FIELD) {
    nrGeometry::fieldChanged(index);
    ++version;
    return;
  }
  if (index == PRIM_COUNT_FIELD || index == COORD_SET_FIELD || index == COORD_INDEX_SET_FIELD) boundChanged();
  if (index == CULL_FACE_FIELD) userSet.setBit(CULL_FACE_SET_BIT);
  calcBindings();
  drawableStale = true;
  if (bpcDynamicBuild && existsBPCullData() &&
      (index == COORD_SET_FIELD || index == NORMAL_SET_FIELD || index == COORD_INDEX_SET_FIELD ||
       index == NORMAL_INDEX_SET_FIELD))
    buildBPCullData();
  touchField(index);
  ++version;
}

void nrGeoSet::childChanged(nrContainer* child, short) {
  if (child == coordSet || child == coordIndexSet) boundChanged();
  drawableStale = true;
  ++version;
}

void nrGeoSet::copy(nrContainer* from, nrCloneTable* table) {
  nrGeometry::copy(from, table);
  if (!from || from == this || !table) return;
  if (from->isOfType(getClassType())) userSet = static_cast<nrGeoSet*>(from)->userSet;
  copyBPCull(from);
  calcBindings();
  drawableStale = true;
  ++version;
}

void nrGeoSet::copyBPCull(nrContainer* from) {
  if (!from->isOfType(getClassType())) return;
  const nrGeoSet* source = static_cast<nrGeoSet*>(from);
  bpcDynamicBuild = source->bpcDynamicBuild;
  bpcPrimNormMode = source->bpcPrimNormMode;
  bpcEpsilon = source->bpcEpsilon;
  freeBPCullData();
  if (source->bpcPoint) bpcPoint = new nrVec3fArray(*source->bpcPoint);
  if (source->bpcCenter) bpcCenter = new nrVec3fArray(*source->bpcCenter);
  if (source->bpcDelta) bpcDelta = new nrFloatArray(*source->bpcDelta);
}

void nrGeoSet::calcBindings() {
  normalBinding = static_cast<unsigned char>(normalSet ? normalBind : NO_NORMAL);
  colorBinding = static_cast<unsigned char>(colorSet ? colorBind : NO_COLOR);
  texCoordBinding = static_cast<unsigned char>(texCoordSet ? texCoordBind : NO_TEX_COORD);

  int code = 0;
  if (normalBinding == OVERALL_NORMAL) code |= OVERALL_NORMAL_BIT;
  if (normalBinding == PER_PRIM_NORMAL) code |= PER_PRIM_NORMAL_BIT;
  if (normalBinding == PER_VERTEX_NORMAL) code |= PER_VERTEX_NORMAL_BIT;
  if (colorBinding == OVERALL_COLOR) code |= OVERALL_COLOR_BIT;
  if (colorBinding == PER_PRIM_COLOR) code |= PER_PRIM_COLOR_BIT;
  if (colorBinding == PER_VERTEX_COLOR) code |= PER_VERTEX_COLOR_BIT;
  if (texCoordBinding == PER_VERTEX_TEX_COORD) code |= PER_VERTEX_TEX_COORD_BIT;

  // One index list serves every attribute only when each bound attribute uses
  // the very index set object of the coordinates (or none, like them).
  bool differ = (colorBinding != NO_COLOR && colorIndexSet != coordIndexSet) ||
                (normalBinding != NO_NORMAL && normalIndexSet != coordIndexSet) ||
                (texCoordBinding != NO_TEX_COORD && texCoordIndexSet != coordIndexSet);
  bool perPrim = (code & (PER_PRIM_NORMAL_BIT | PER_PRIM_COLOR_BIT)) != 0;
  int strategy = IMMEDIATE_STRATEGY;
  if (!differ && perPrim)
    strategy = coordIndexSet ? PRIM_ELEMENTS_STRATEGY : PRIM_ARRAYS_STRATEGY;
  else if (!differ)
    strategy = coordIndexSet ? ELEMENTS_STRATEGY : ARRAYS_STRATEGY;
  drawCode = static_cast<unsigned short>(code | strategy << STRATEGY_SHIFT);

  overallDraw = overallFuncs[code & 7];
  perPrimDraw = perPrimFuncs[(code >> 3) & 7];
  perVertDraw = perVertFuncs[(code >> 6) & 7];
  vertArrayDraw = vertArrayFuncs[(code >> 6) & 7];
}

// ---- drawing ----

void nrGeoSet::draw(nrDrawAction* action) {
  if (action && action->getBPCullEnable())
    drawWithBpc(action);
  else
    drawWithoutBpc(action);
}

void nrGeoSet::drawWithoutBpc(nrDrawAction* action) {
  cleanPendingFields();
  nrGLAttrSet attrs;
  if (beginDraw(attrs, contextOf(action))) drawGeometry(attrs, nullptr);
}

void nrGeoSet::drawWithBpc(nrDrawAction* action) {
  cleanPendingFields();
  nrGLAttrSet attrs;
  if (beginDraw(attrs, contextOf(action))) drawGeometry(attrs, existsBPCullData() ? action : nullptr);
}

bool nrGeoSet::beginDraw(nrGLAttrSet& attrs, nrContext* context) {
  attrs.context = context;
  if (!context || !coordSet || getDrawablePrimCount() <= 0) return false;
  unsigned char recording = context->getRecordEnable();
  context->setRecordEnable(0);
  if (texCoordBinding != NO_TEX_COORD) {
    static_cast<nrTexCoordSet*>(texCoordSet)->getGLAttr(attrs.texCoord);
    attrs.texCoord.index = indicesOf(texCoordIndexSet);
  }
  if (normalBinding != NO_NORMAL) {
    static_cast<nrNormalSet*>(normalSet)->getGLAttr(attrs.normal);
    attrs.normal.index = indicesOf(normalIndexSet);
  }
  const _nrGfx& shadow = context->getShadowState();
  if (colorBinding != NO_COLOR) {
    static_cast<nrColorSet*>(colorSet)->getGLAttr(attrs.color);
    attrs.color.index = indicesOf(colorIndexSet);
    bool screenDoor = shadow.transpEnable && (shadow.transpMode == nrContext::FAST_TRANSP ||
                                              shadow.transpMode == nrContext::SCREEN_DOOR_TRANSP);
    const DrawFunc* overall = overallFuncs;
    const DrawFunc* perPrim = perPrimFuncs;
    if (screenDoor) {
      overall = overallScrDoorFuncs;
      perPrim = perPrimScrDoorFuncs;
    }
    overallDraw = overall[drawCode & 7];
    perPrimDraw = perPrim[(drawCode >> 3) & 7];
  } else if (shadow.materialModeEnable == nrContext::COLOR_MATERIAL) {
    nrgl::Color4f(1, 1, 1, 1);
  }
  static_cast<nrCoordSet*>(coordSet)->getGLAttr(attrs.coord);
  attrs.coord.index = indicesOf(coordIndexSet);
  bool ownCullFace = userSet.isBitSet(CULL_FACE_SET_BIT) && cullFace >= 0 && cullFace <= nrContext::BOTH_CULL;
  context->setCullFace(ownCullFace ? nrContext::CullFaceEnum(cullFace) : context->getGlobalState().cullFace);
  context->setRecordEnable(recording);
  return true;
}

void nrGeoSet::applyLineWidth(nrContext* context, float width) {
  unsigned char recording = context->getRecordEnable();
  context->setRecordEnable(0);
  context->setLineWidth(userSet.isBitSet(LINE_WIDTH_SET_BIT) ? width : context->getGlobalState().lineWidth);
  context->setRecordEnable(recording);
}

void nrGeoSet::applyPointSize(nrContext* context, float size) {
  unsigned char recording = context->getRecordEnable();
  context->setRecordEnable(0);
  context->setPointSize(userSet.isBitSet(POINT_SIZE_SET_BIT) ? size : context->getGlobalState().pointSize);
  context->setRecordEnable(recording);
}

void nrGeoSet::startPrims(nrGLAttrSet& attrs) {
  if (overallDraw) overallDraw(attrs);
  if ((drawCode >> STRATEGY_SHIFT) != IMMEDIATE_STRATEGY) vertArrayDraw(attrs);
}

void nrGeoSet::skipPrim(nrGLAttrSet& attrs, int count) {
  if ((drawCode >> STRATEGY_SHIFT) == IMMEDIATE_STRATEGY) {
    if (drawCode & PER_VERTEX_COLOR_BIT) attrs.color.skip(count);
    if (drawCode & PER_VERTEX_NORMAL_BIT) attrs.normal.skip(count);
    if (drawCode & PER_VERTEX_TEX_COORD_BIT) attrs.texCoord.skip(count);
    attrs.coord.skip(count);
  }
  if (drawCode & PER_PRIM_COLOR_BIT) attrs.color.skip(1);
  if (drawCode & PER_PRIM_NORMAL_BIT) attrs.normal.skip(1);
}

void nrGeoSet::drawFixed(nrGLAttrSet& attrs, GLenum mode, int primLen, nrDrawAction* bpcAction) {
  drawPrims(attrs, mode, primLen, nullptr, bpcAction);
}

void nrGeoSet::drawLengths(nrGLAttrSet& attrs, GLenum mode, const nrIntArray& lengths, nrDrawAction* bpcAction) {
  drawPrims(attrs, mode, 0, lengths.getArray(), bpcAction);
}

void nrGeoSet::drawPrims(nrGLAttrSet& attrs, GLenum mode, int primLen, const int* lengths,
                         nrDrawAction* bpcAction) {
  int n = getDrawablePrimCount();
  int strategy = drawCode >> STRATEGY_SHIFT;
  // Strips and fans of fewer than three vertices draw nothing, and some
  // OpenGL implementations overrun their buffers recording them into a
  // display list: lists leave them out.
  const int shortest = recordingList && (mode == GL_TRIANGLE_STRIP || mode == GL_TRIANGLE_FAN) ? 3 : 0;
  startPrims(attrs);
  if (strategy == IMMEDIATE_STRATEGY) {
    if (!lengths) nrgl::Begin(mode);
    for (int p = 0; p < n; ++p) {
      int len = lengths ? lengths[p] : primLen;
      if (len < shortest || (bpcAction && !isPrimBpcFrontFacing(p, bpcAction))) {
        skipPrim(attrs, len);
        continue;
      }
      if (lengths) nrgl::Begin(mode);
      if (perPrimDraw) perPrimDraw(attrs);
      for (int v = 0; v < len; ++v) perVertDraw(attrs);
      if (lengths) nrgl::End();
    }
    if (!lengths) nrgl::End();
    return;
  }
  const GLuint* elements = strategy >= ELEMENTS_STRATEGY ? reinterpret_cast<const GLuint*>(attrs.coord.index) : nullptr;
  if (!lengths && !bpcAction && !perPrimDraw) {
    if (elements)
      nrgl::DrawElements(mode, n * primLen, GL_UNSIGNED_INT, elements);
    else
      nrgl::DrawArrays(mode, 0, n * primLen);
    return;
  }
  // A display list keeps what it is given: strips and fans recorded as one
  // list of the same triangles replay as one primitive instead of one per
  // strip, which spares OpenGL its cost per primitive at every replay.
  if (recordingList && lengths && !bpcAction && !perPrimDraw &&
      (mode == GL_TRIANGLE_STRIP || mode == GL_TRIANGLE_FAN)) {
    std::vector<GLuint> triangles;
    if (triangleIndices(mode, n, lengths, elements, triangles)) {
      if (!triangles.empty())
        nrgl::DrawElements(GL_TRIANGLES, GLsizei(triangles.size()), GL_UNSIGNED_INT, triangles.data());
      return;
    }
  }
  int first = 0;
  for (int p = 0; p < n; first += lengths ? lengths[p] : primLen, ++p) {
    int len = lengths ? lengths[p] : primLen;
    if (len < shortest || (bpcAction && !isPrimBpcFrontFacing(p, bpcAction))) {
      skipPrim(attrs, len);
      continue;
    }
    if (perPrimDraw) perPrimDraw(attrs);
    if (elements)
      nrgl::DrawElements(mode, len, GL_UNSIGNED_INT, elements + first);
    else
      nrgl::DrawArrays(mode, first, len);
  }
}

void nrGeoSet::drawCompiled(nrDrawAction* action) {
  // Which primitives face the viewer changes with the view, so culled drawing
  // is never recorded.
  if (displayListId < 1 || (action && action->getBPCullEnable())) {
    nrGeoSet::draw(action);
    return;
  }
  cleanPendingFields();
  nrContext* context = contextOf(action);
  nrGLAttrSet attrs;
  // The set's state is applied on every draw, outside the list, so that the
  // context's shadow stays true.
  if (!beginDraw(attrs, context)) return;
  // Versions from 1: a freed id's entry (0) always reads as out of date.
  if (context->isDirty(displayListId, version + 1)) {
    nrgl::DeleteLists(displayListId, 1);
    recordList(attrs, true);
  }
  nrgl::CallList(displayListId);
}

void nrGeoSet::recordList(nrGLAttrSet& attrs, bool drawable) {
  nrgl::NewList(displayListId, GL_COMPILE);
  if (drawable) {
    recordingList = true;
    drawGeometry(attrs, nullptr);
    recordingList = false;
  }
  nrgl::EndList();
}

void nrGeoSet::compileList(nrCompileAction* action) {
  nrContext* context = action ? action->getContext() : nullptr;
  if (!context) return;
  cleanPendingFields();
  if (displayListId < 1)
    displayListId = nrContext::newId(1);
  else
    nrgl::DeleteLists(displayListId, 1);
  nrGLAttrSet attrs;
  recordList(attrs, beginDraw(attrs, context));
  context->isDirty(displayListId, version + 1);
}

// ---- picking ----

int nrGeoSet::isect(nrIsectAction* action) {
  cleanPendingFields();
  if (!coordSet || cullFace == nrContext::BOTH_CULL || !isectBox(action)) return 0;
  const nrSeg& seg = action->getSeg();
  nrGLAttr coords;
  static_cast<nrCoordSet*>(coordSet)->getGLAttr(coords);
  const int* index = indicesOf(coordIndexSet);
  if (pickTree && pickTree->getVersion() != version) {
    delete pickTree;
    pickTree = nullptr;
  }
  if (!pickTree) pickTree = buildPickTree(coords, index);
  if (pickTree) {
    nrDetail::nrPickTree::Hit hit;
    if (!pickTree->pick(seg, coords.data, coords.stride, cullFace, hitTri, hit)) return 0;
    return action->hitGeometry(this, hit.t, pickTree->primOf(hit.order), hit.normal);
  }
  int n = getDrawablePrimCount(), kept = 0;
  for (int p = 0, first = 0; p < n; ++p) {
    int len = getPrimLen(p), v[3];
    for (int t = 0; getPrimTri(first, len, t, v); ++t) {
      nrVec3f a = elementOf(coords, index ? index[v[0]] : v[0]), b = elementOf(coords, index ? index[v[1]] : v[1]),
              c = elementOf(coords, index ? index[v[2]] : v[2]);
      kept |= isectTri(action, a, b, c, cullFace, p);
    }
    first += len;
  }
  return kept;
}

nrDetail::nrPickTree* nrGeoSet::buildPickTree(const nrGLAttr& coords, const int* index) {
  // A tree pays for itself only past a few triangles (a box's twelve are
  // tested at once); every kind of set has at most length - 2 per primitive.
  enum { SMALL_PICK_SET = 16 };
  int n = getDrawablePrimCount();
  // The lengths are kept where the primitives' first triangles go.
  std::unique_ptr<int[]> primFirst(new int[n + 1]);
  long most = 0;
  for (int p = 0; p < n; ++p) {
    primFirst[p] = getPrimLen(p);
    most += std::max(primFirst[p] - 2, 0);
  }
  if (most <= SMALL_PICK_SET) return nullptr;
  std::unique_ptr<nrDetail::nrPickTree::Tri[]> tris(new nrDetail::nrPickTree::Tri[most]);
  int count = 0;
  for (int p = 0, first = 0; p < n; ++p) {
    int len = primFirst[p];
    primFirst[p] = count;
    nrDetail::nrPickTree::Tri tri;
    for (int t = 0; t < len - 2 && getPrimTri(first, len, t, tri.v); ++t) {
      if (index)
        for (int& v : tri.v) v = index[v];
      tri.order = count;
      tris[count++] = tri;
    }
    first += len;
  }
  primFirst[n] = count;
  return new nrDetail::nrPickTree(version, tris.get(), count, coords.data, coords.stride, std::move(primFirst), n);
}

// ---- limits and bounds ----

int nrGeoSet::getDrawablePrimCount() {
  // Values routed into the sets since the count was taken come in first: each
  // marks the count stale as it arrives.
  if (coordSet) countOf<nrCoordSet>(coordSet);
  if (normalSet) countOf<nrNormalSet>(normalSet);
  if (colorSet) countOf<nrColorSet>(colorSet);
  if (texCoordSet) countOf<nrTexCoordSet>(texCoordSet);
  for (nrContainer* indices : {coordIndexSet, normalIndexSet, colorIndexSet, texCoordIndexSet})
    if (indices) static_cast<nrIndexSet*>(indices)->getCount();
  if (!drawableStale) return drawablePrims;
  drawableStale = false;
  drawablePrims = 0;
  if (!coordSet || primCount <= 0) return 0;

  AttrLimit coords, normals, colors, texCoords;
  coords.from(coordSet, countOf<nrCoordSet>, coordIndexSet);
  if (normalBinding != NO_NORMAL) normals.from(normalSet, countOf<nrNormalSet>, normalIndexSet);
  if (colorBinding != NO_COLOR) colors.from(colorSet, countOf<nrColorSet>, colorIndexSet);
  if (texCoordBinding != NO_TEX_COORD) texCoords.from(texCoordSet, countOf<nrTexCoordSet>, texCoordIndexSet);

  bool ok = (normalBinding != OVERALL_NORMAL || normals.has(0)) && (colorBinding != OVERALL_COLOR || colors.has(0));
  // Sets are nearly always whole: checked in bulk first, primitive by
  // primitive only to find where one is not.
  // A primitive count far beyond the coordinates stops where they run out.
  const long coordsGiven = coords.index ? coords.indexCount : coords.count;
  long vertices = 0;
  int whole = 0;
  for (; whole < primCount && vertices <= coordsGiven; ++whole) {
    int len = getPrimLen(whole);
    if (len < 0) break;
    vertices += len;
  }
  if (ok && whole == primCount && coords.hasFirst(vertices) &&
      (normalBinding != PER_VERTEX_NORMAL || normals.hasFirst(vertices)) &&
      (colorBinding != PER_VERTEX_COLOR || colors.hasFirst(vertices)) &&
      (texCoordBinding != PER_VERTEX_TEX_COORD || texCoords.hasFirst(vertices)) &&
      (normalBinding != PER_PRIM_NORMAL || normals.hasFirst(primCount)) &&
      (colorBinding != PER_PRIM_COLOR || colors.hasFirst(primCount)))
    return drawablePrims = primCount;
  int vertex = 0, p = 0;
  for (; ok && p < primCount; ++p) {
    int len = getPrimLen(p);
    if (len < 0 || (normalBinding == PER_PRIM_NORMAL && !normals.has(p)) ||
        (colorBinding == PER_PRIM_COLOR && !colors.has(p)))
      break;
    // Counted from vertex: a huge length must not overflow the end.
    for (int v = vertex; ok && v - vertex < len; ++v)
      ok = coords.has(v) && (normalBinding != PER_VERTEX_NORMAL || normals.has(v)) &&
           (colorBinding != PER_VERTEX_COLOR || colors.has(v)) &&
           (texCoordBinding != PER_VERTEX_TEX_COORD || texCoords.has(v));
    if (!ok) break;
    vertex += len;
  }
  // Geometry sets report nothing: missing data only shortens what is drawn.
  return drawablePrims = p;
}

nrVec3f nrGeoSet::getCoord(int v) { return elementAt<nrCoordSet>(coordSet, coordIndexSet, v); }

void nrGeoSet::calcBound(nrBoxBound& box) {
  box.makeEmpty();
  int n = getDrawablePrimCount(), vertices = 0;
  for (int p = 0; p < n; ++p) vertices += getPrimLen(p);
  boundVertices(box, vertices);
}

void nrGeoSet::boundCoords(nrBoxBound& box, int primLen, const nrIntArray* primLengths) {
  // Summed wide: lengths and counts are the caller's and may be anything.
  long vertices = 0;
  if (primLengths) {
    for (unsigned p = 0; p < primLengths->getCount() && int(p) < primCount && (*primLengths)[p] >= 0; ++p)
      vertices += (*primLengths)[p];
  } else if (primCount > 0 && primLen > 0) {
    vertices = long(primCount) * primLen;
  }
  boundVertices(box, int(std::min(vertices, long(INT_MAX))));
}

void nrGeoSet::boundVertices(nrBoxBound& box, int vertices) {
  if (!coordSet) return;
  nrCoordSet* coords = static_cast<nrCoordSet*>(coordSet);
  nrGLAttr a;
  coords->getGLAttr(a);
  int count = static_cast<int>(coords->getCount());
  const int* index = nullptr;
  if (coordIndexSet) {
    const nrIntArray& indices = static_cast<nrIndexSet*>(coordIndexSet)->getArray();
    index = indices.getArray();
    if (vertices > int(indices.getCount())) vertices = int(indices.getCount());
  } else if (vertices > count) {
    vertices = count;
  }
  // The extremes are kept apart from the box while the loop runs: large sets
  // are bounded at reading time.
  float lo[3] = {HUGE_VALF, HUGE_VALF, HUGE_VALF}, hi[3] = {-HUGE_VALF, -HUGE_VALF, -HUGE_VALF};
  bool any = false;
  for (int v = 0; v < vertices; ++v) {
    int e = index ? index[v] : v;
    if (unsigned(e) >= unsigned(count)) continue;
    const float* p = reinterpret_cast<const float*>(a.data + a.stride * e);
    for (int k = 0; k < 3; ++k) {
      lo[k] = std::min(lo[k], p[k]);
      hi[k] = std::max(hi[k], p[k]);
    }
    any = true;
  }
  if (any) {
    box.extendBy(nrVec3f(lo[0], lo[1], lo[2]));
    box.extendBy(nrVec3f(hi[0], hi[1], hi[2]));
  }
}

// ---- VRML index lists ----

int nrGeoSet::flattenVRMLIndices(nrMFInt* vrmlIndices, nrIndexSet* out, nrMFInt* primLengths) {
  if (!vrmlIndices) return 0;
  const nrIntArray& in = vrmlIndices->getArray();
  const int* list = in.getArray();
  unsigned n = in.getCount(), ends = 0;
  for (unsigned i = 0; i < n; ++i) ends += list[i] < 0;
  // Both results are sized exactly first and filled in place: lists of
  // millions of indices cost two passes and no growth.
  int* indices = nullptr;
  if (out) {
    out->setCount(n - ends);
    indices = out->edit();
  }
  int* lengths = nullptr;
  if (primLengths) {
    primLengths->setCount(n && list[n - 1] >= 0 ? ends + 1 : ends);
    lengths = primLengths->edit();
  }
  int count = 0, prims = 0;
  for (unsigned i = 0; i < n; ++i) {
    if (list[i] >= 0) {
      if (indices) *indices++ = list[i];
      ++count;
    } else {
      if (lengths) lengths[prims] = count;
      ++prims;
      count = 0;
    }
  }
  if (count > 0 && lengths) lengths[prims++] = count;
  if (out) out->changed();
  if (!primLengths) return 0;
  primLengths->setCount(unsigned(prims));
  return prims;
}

void nrGeoSet::indexAttribute(nrMFInt* list, nrIndexSet*& own, nrContainer*& member, short setField) {
  nrContainer* target = coordIndexSet;
  if (list->getCount() > 0) {
    if (!own) {
      own = new nrIndexSet;
      own->ref();
    }
    target = own;
  }
  if (member != target) setRef(member, target, setField);
  // An empty list leaves the coordinates' indices, now shared, as they are.
  if (target == own) flattenVRMLIndices(list, own, nullptr);
}

void nrGeoSet::copyWithOwnIndexSets(nrContainer* from, nrCloneTable* table) {
  if (!from || from == this) return;
  nrContainer** sets[] = {&coordIndexSet, &normalIndexSet, &colorIndexSet, &texCoordIndexSet};
  // Copying shares references without releasing what was held before.
  for (nrContainer** s : sets) {
    unrefer(*s);
    *s = nullptr;
  }
  nrGeometry::copy(from, table);
  for (nrContainer** s : sets) {
    unrefer(*s);
    *s = nullptr;
  }
  if (from->isOfType(getClassType())) userSet = static_cast<nrGeoSet*>(from)->userSet;
  copyBPCull(from);
  setCoordIndexSet(new nrIndexSet);
}

void nrGeoSet::writeVRML(nrOutput* out, const short* ownFields, int count, short keptFlag) {
  cleanAllFields();
  if (writeHeader(out)) return;
  FILE* f = out->getStream();
  // Attribute sets of the kinds the file format knows take its class names.
  const struct {
    nrContainer* set;
    const char* field;
    nrType* vrmlType;
    const char* vrmlName;
  } attributes[] = {{coordSet, "coord", nrCoordSet3f::getClassType(), "Coordinate"},
                    {normalSet, "normal", nrNormalSet3f::getClassType(), "Normal"},
                    {colorSet, "color", nrColorSet3f::getClassType(), "Color"},
                    {texCoordSet, "texCoord", nrTexCoordSet2f::getClassType(), "TextureCoordinate"}};
  for (const auto& a : attributes) {
    if (!a.set) continue;
    out->indent();
    fprintf(f, "%s ", a.field);
    if (a.set->getType() == a.vrmlType)
      a.set->writeAs(out, a.vrmlName);
    else
      a.set->write(out);
    fputs("\n", f);
  }
  for (int i = 0; i < count; ++i) {
    nrFieldInfo* info = getType()->getFieldInfo(ownFields[i]);
    if (info->getFieldType() != nrSFUByte::getClassType()) {
      info->write(out, this);
    } else if (ownFields[i] == keptFlag || !info->isDefault(this)) {
      // The file syntax spells its flags as words.
      out->indent();
      fprintf(f, "%s %s\n", info->getName().getString(),
              static_cast<nrSFUByte*>(getField(ownFields[i]))->get() ? "TRUE" : "FALSE");
    }
  }
  writeClose(out);
}

// ---- per-primitive back-face culling ----

void nrGeoSet::freeBPCullData() {
  setBPCullPoint(nullptr);
  setBPCullCenter(nullptr);
  setBPCullDelta(nullptr);
}

// One array given as both the points and the axes is deleted once, when
// neither holds it any more.
void nrGeoSet::setBPCullPoint(nrVec3fArray* points) {
  nrVec3fArray* old = bpcPoint;
  bpcPoint = points;
  if (old != points && old != bpcCenter) delete old;
}

void nrGeoSet::setBPCullCenter(nrVec3fArray* axes) {
  nrVec3fArray* old = bpcCenter;
  bpcCenter = axes;
  if (old != axes && old != bpcPoint) delete old;
}

void nrGeoSet::setBPCullDelta(nrFloatArray* thresholds) {
  if (thresholds != bpcDelta) delete bpcDelta;
  bpcDelta = thresholds;
}

// One entry per drawable primitive, walked by getPrimLen; primitives the data
// cannot draw get none and are never culled.
void nrGeoSet::buildBPCullData() {
  if (!bpcPoint) bpcPoint = new nrVec3fArray;
  if (!bpcCenter || bpcCenter == bpcPoint) bpcCenter = new nrVec3fArray;
  if (!bpcDelta) bpcDelta = new nrFloatArray;
  int n = coordSet ? getDrawablePrimCount() : 0;
  bpcPoint->setCount(unsigned(n));
  bpcCenter->setCount(unsigned(n));
  bpcDelta->setCount(unsigned(n));
  for (int p = 0, first = 0; p < n; ++p) {
    int len = getPrimLen(p);
    bpcBuildDataPrim(p, first, len, (*bpcPoint)[p], (*bpcCenter)[p], (*bpcDelta)[p]);
    first += len;
  }
}

void nrGeoSet::bpcBuildDataPrim(int prim, int firstVertex, int count, nrVec3f& point, nrVec3f& axis,
                                float& delta) {
  // A primitive without vertices has no reference point: it is never culled.
  if (count <= 0) {
    point.set(0, 0, 0);
    axis.set(0, 0, 0);
    delta = -2.0f;
    return;
  }
  point = getRefPoint(prim, firstVertex, count);
  nrVec3f min, max;
  if (bpcPrimNormMode && normalBinding != NO_NORMAL)
    getPrimNormBB(prim, firstVertex, count, min, max);
  else
    getPrimFaceNormBB(prim, firstVertex, count, min, max);
  axis.add(min, max);
  axis.scale(0.5f, axis);
  if (axis.length() < bpcEpsilon) {
    axis.set(0, 0, 0);
    delta = -2.0f;
    return;
  }
  axis.normalize();
  delta = getNormBBDelta(min, max, axis);
}

nrVec3f nrGeoSet::getRefPoint(int, int firstVertex, int) { return getCoord(firstVertex); }

void nrGeoSet::getNormBB(int firstVertex, int count, nrVec3f& min, nrVec3f& max) {
  nrBoxBound box;
  // Counted wide: the range given may reach past the last vertex number.
  for (long v = firstVertex, end = long(firstVertex) + count; v < end && v <= INT_MAX; ++v)
    box.extendBy(elementAt<nrNormalSet>(normalSet, normalIndexSet, int(v)));
  min = box.min;
  max = box.max;
}

void nrGeoSet::getPrimNormBB(int prim, int firstVertex, int count, nrVec3f& min, nrVec3f& max) {
  min.set(0, 0, 0);
  max.set(0, 0, 0);
  switch (normalBinding) {
    case PER_VERTEX_NORMAL:
      getNormBB(firstVertex, count, min, max);
      break;
    case PER_PRIM_NORMAL:
    case OVERALL_NORMAL:
      min = max = elementAt<nrNormalSet>(normalSet, normalIndexSet, normalBinding == PER_PRIM_NORMAL ? prim : 0);
      break;
    default:
      break;
  }
}

// Face normals: those of the triangles the primitive is drawn as.
void nrGeoSet::getPrimFaceNormBB(int, int firstVertex, int count, nrVec3f& min, nrVec3f& max) {
  nrBoxBound box;
  int v[3];
  // No vertex is numbered past INT_MAX: a range reaching further stops there.
  if (firstVertex >= 0 && count > INT_MAX - firstVertex) count = INT_MAX - firstVertex;
  for (int t = 0; count >= 3 && getPrimTri(firstVertex, count, t, v); ++t) {
    nrVec3f normal;
    getTriNormal(getCoord(v[0]), getCoord(v[1]), getCoord(v[2]), normal);
    if (normal.dot(normal) > 0) box.extendBy(normal);
  }
  if (box.isEmpty()) {
    min.set(0, 0, 0);
    max.set(0, 0, 0);
  } else {
    min = box.min;
    max = box.max;
  }
}

float nrGeoSet::getNormBBDelta(const nrVec3f& min, const nrVec3f& max, const nrVec3f& axis) {
  float c = 1;
  for (int k = 0; k < 8; ++k) {
    nrVec3f corner(k & 1 ? max[0] : min[0], k & 2 ? max[1] : min[1], k & 4 ? max[2] : min[2]);
    corner.normalize();
    float d = axis.dot(corner);
    if (d < c) c = d;
  }
  if (c <= 0) return -2.0f;
  if (c <= 1 - bpcEpsilon) return -std::sqrt(1 - c * c);
  return 0;
}

bool nrGeoSet::fanTri(int firstVertex, int count, int t, int v[3]) {
  if (t < 0 || t >= count - 2) return false;
  v[0] = firstVertex;
  v[1] = firstVertex + t + 1;
  v[2] = firstVertex + t + 2;
  return true;
}

void nrGeoSet::getTriNormal(const nrVec3f& a, const nrVec3f& b, const nrVec3f& c, nrVec3f& normal) {
  nrVec3f ab, ac;
  ab.sub(b, a);
  ac.sub(c, a);
  normal.cross(ab, ac);
  normal.normalize();
}

bool nrGeoSet::isPrimBpcFrontFacing(int prim, nrDrawAction* action) {
  // Arrays the application set may be missing or short: a primitive without
  // all three entries is drawn.
  if (!action || !bpcPoint || !bpcCenter || !bpcDelta || prim < 0 || unsigned(prim) >= bpcPoint->getCount() ||
      unsigned(prim) >= bpcCenter->getCount() || unsigned(prim) >= bpcDelta->getCount())
    return true;
  nrVec3f view = action->getViewVector();
  if (!action->getOrthographic()) {
    view.sub(view, (*bpcPoint)[prim]);
    view.normalize();
  }
  return (*bpcCenter)[prim].dot(view) >= (*bpcDelta)[prim];
}

// ---- routines ----

void nrGeoSet::overallDrawN(nrGLAttrSet& a) { sendCurrent(a.normal); }
void nrGeoSet::overallDrawC(nrGLAttrSet& a) { sendCurrent(a.color); }
void nrGeoSet::overallDrawCN(nrGLAttrSet& a) {
  sendCurrent(a.color);
  sendCurrent(a.normal);
}
void nrGeoSet::overallDrawCScrDoor(nrGLAttrSet& a) {
  stippleFor(a.color);
  sendCurrent(a.color);
}
void nrGeoSet::overallDrawCNScrDoor(nrGLAttrSet& a) {
  stippleFor(a.color);
  sendCurrent(a.color);
  sendCurrent(a.normal);
}
void nrGeoSet::perPrimDrawN(nrGLAttrSet& a) { a.normal.sendNext(); }
void nrGeoSet::perPrimDrawC(nrGLAttrSet& a) { a.color.sendNext(); }
void nrGeoSet::perPrimDrawCN(nrGLAttrSet& a) {
  a.color.sendNext();
  a.normal.sendNext();
}
void nrGeoSet::perPrimDrawCScrDoor(nrGLAttrSet& a) {
  stippleFor(a.color);
  a.color.sendNext();
}
void nrGeoSet::perPrimDrawCNScrDoor(nrGLAttrSet& a) {
  stippleFor(a.color);
  a.color.sendNext();
  a.normal.sendNext();
}
void nrGeoSet::perVertDraw0(nrGLAttrSet& a) { perVert<0>(a); }
void nrGeoSet::perVertDrawT(nrGLAttrSet& a) { perVert<T>(a); }
void nrGeoSet::perVertDrawN(nrGLAttrSet& a) { perVert<N>(a); }
void nrGeoSet::perVertDrawNT(nrGLAttrSet& a) { perVert<N | T>(a); }
void nrGeoSet::perVertDrawC(nrGLAttrSet& a) { perVert<C>(a); }
void nrGeoSet::perVertDrawCT(nrGLAttrSet& a) { perVert<C | T>(a); }
void nrGeoSet::perVertDrawCN(nrGLAttrSet& a) { perVert<C | N>(a); }
void nrGeoSet::perVertDrawCNT(nrGLAttrSet& a) { perVert<C | N | T>(a); }
void nrGeoSet::vertArrayDraw0(nrGLAttrSet& a) { vertArray<0>(a); }
void nrGeoSet::vertArrayDrawT(nrGLAttrSet& a) { vertArray<T>(a); }
void nrGeoSet::vertArrayDrawN(nrGLAttrSet& a) { vertArray<N>(a); }
void nrGeoSet::vertArrayDrawNT(nrGLAttrSet& a) { vertArray<N | T>(a); }
void nrGeoSet::vertArrayDrawC(nrGLAttrSet& a) { vertArray<C>(a); }
void nrGeoSet::vertArrayDrawCT(nrGLAttrSet& a) { vertArray<C | T>(a); }
void nrGeoSet::vertArrayDrawCN(nrGLAttrSet& a) { vertArray<C | N>(a); }
void nrGeoSet::vertArrayDrawCNT(nrGLAttrSet& a) { vertArray<C | N | T>(a); }
