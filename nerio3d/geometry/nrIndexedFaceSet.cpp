#include "nerio3d/geometry/nrIndexedFaceSet.h"

#include <initializer_list>

#include "nerio3d/fields/nrMField.h"
#include "nerio3d/fields/nrSField.h"

NR_DEFINE_TYPE(nrIndexedFaceSet, nrPolySet, "IndexedFaceSet") {
  nrSFUByte::addTypeField(type, "ccw", CCW_FIELD, 1, &nrIndexedFaceSet::ccw);
  nrSFUByte::addTypeField(type, "solid", SOLID_FIELD, 1, &nrIndexedFaceSet::solid);
  nrSFUByte::addTypeField(type, "convex", CONVEX_FIELD, 1, &nrIndexedFaceSet::convex);
  nrSFFloat::addTypeField(type, "creaseAngle", CREASE_ANGLE_FIELD, 0.0f, &nrIndexedFaceSet::creaseAngle);
  nrMFInt::addTypeField(type, "coordIndex", COORD_INDEX_FIELD, &nrIndexedFaceSet::coordIndex);
  nrMFInt::addTypeField(type, "colorIndex", COLOR_INDEX_FIELD, &nrIndexedFaceSet::colorIndex);
  nrMFInt::addTypeField(type, "texCoordIndex", TEX_COORD_INDEX_FIELD, &nrIndexedFaceSet::texCoordIndex);
  nrMFInt::addTypeField(type, "normalIndex", NORMAL_INDEX_FIELD, &nrIndexedFaceSet::normalIndex);
  nrSFUByte::addTypeField(type, "colorPerVertex", COLOR_PER_VERTEX_FIELD, 1, &nrIndexedFaceSet::colorPerVertex);
  nrSFUByte::addTypeField(type, "normalPerVertex", NORMAL_PER_VERTEX_FIELD, 1, &nrIndexedFaceSet::normalPerVertex);
}

nrIndexedFaceSet::nrIndexedFaceSet(nrType* type)
    : nrPolySet(type),
      pending(0),
      coordIndexFromSet(false),
      normalIndexFromSet(false),
      ownNormalIndexSet(nullptr),
      ownColorIndexSet(nullptr),
      ownTexCoordIndexSet(nullptr) {
  initFieldDefaults(classType);
  setColorBind(PER_VERTEX_COLOR);
  setNormalBind(PER_VERTEX_NORMAL);
  setCoordIndexSet(new nrIndexSet);
}

nrIndexedFaceSet::~nrIndexedFaceSet() {
  for (nrIndexSet* own : {ownNormalIndexSet, ownColorIndexSet, ownTexCoordIndexSet})
    if (own) own->unref();
  destroyFieldContents(classType);
}

void nrIndexedFaceSet::fieldChanged(short index) {
  switch (index) {
    case CCW_FIELD:
    case SOLID_FIELD:
      setCullFace(!solid ? nrContext::NO_CULL : ccw ? nrContext::BACK_CULL : nrContext::FRONT_CULL);
      break;
    case COLOR_PER_VERTEX_FIELD:
      setColorBind(colorPerVertex ? PER_VERTEX_COLOR : PER_PRIM_COLOR);
      break;
    case NORMAL_PER_VERTEX_FIELD:
      setNormalBind(normalPerVertex ? PER_VERTEX_NORMAL : PER_PRIM_NORMAL);
      break;
    case COORD_INDEX_FIELD:
      coordIndexFromSet = false;
      schedule(COORD_PENDING);
      break;
    case COLOR_INDEX_FIELD:
      schedule(COLOR_PENDING);
      break;
    case TEX_COORD_INDEX_FIELD:
      schedule(TEX_COORD_PENDING);
      break;
    case NORMAL_INDEX_FIELD:
      normalIndexFromSet = false;
      schedule(NORMAL_PENDING);
      break;
    default:
      if (index < CCW_FIELD) {
        nrPolySet::fieldChanged(index);
        return;
      }
  }
  touchField(index);
}

// The side effects sit on the fields a conversion produces, so reading any of
// them (or the box, or drawing, picking and writing) converts first.
void nrIndexedFaceSet::schedule(int conversions) {
  // Lists read one element at a time land here for every element.
  if ((pending & conversions) == conversions) return;
  pending |= conversions;
  if (conversions & COORD_PENDING) {
    boundChanged();
    propagateSideEffect(PRIM_COUNT_FIELD);
    propagateSideEffect(COORD_INDEX_SET_FIELD);
    propagateSideEffect(POLY_LENGTH_FIELD);
  }
  if (conversions & NORMAL_PENDING) propagateSideEffect(NORMAL_INDEX_SET_FIELD);
  if (conversions & COLOR_PENDING) propagateSideEffect(COLOR_INDEX_SET_FIELD);
  if (conversions & TEX_COORD_PENDING) propagateSideEffect(TEX_COORD_INDEX_SET_FIELD);
}

void nrIndexedFaceSet::cleanSideEffect(short index) {
  if (pending) convert();
  if (index == COORD_INDEX_FIELD && coordIndexFromSet) {
    coordIndexFromSet = false;
    // The application may have taken the index set away since: the list then stays empty.
    if (coordIndexSet) rebuildList(coordIndex, static_cast<nrIndexSet*>(coordIndexSet)->getArray());
  }
  if (index == NORMAL_INDEX_FIELD && normalIndexFromSet) {
    normalIndexFromSet = false;
    rebuildList(normalIndex, ownNormalIndexSet->getArray());
  }
  nrPolySet::cleanSideEffect(index);
}

void nrIndexedFaceSet::cleanFieldsForUse(const nrBitMask&) {
  // A conversion on the way may leave the lists waiting: what is pending is
  // taken again after each pass.
  for (;;) {
    uint64_t lists = uint64_t(coordIndexFromSet) << COORD_INDEX_FIELD;
    lists |= uint64_t(normalIndexFromSet) << NORMAL_INDEX_FIELD;
    // A list routed in is taken all the same: it replaces the freed one.
    uint64_t used = (getSideEffectMask().getBits() & ~lists) | getStaleInputMask().getBits();
    if (!used) return;
    for (short i = 0; i < 64; ++i)
      if (used >> i & 1) validateField(i);
  }
}

void nrIndexedFaceSet::convert() {
  // Cleared first: the conversions read fields, which would convert again.
  int todo = pending;
  pending = 0;
  if (!coordIndexSet) {
    setCoordIndexSet(new nrIndexSet);
    todo = ALL_PENDING;
  }
  if (todo & COORD_PENDING) {
    nrMFInt* lengths = static_cast<nrMFInt*>(getField(POLY_LENGTH_FIELD));
    setPrimCount(flattenVRMLIndices(static_cast<nrMFInt*>(getField(COORD_INDEX_FIELD)),
                                    static_cast<nrIndexSet*>(coordIndexSet), lengths));
    dropCoordIndex();
    // Attributes without lists of their own follow the coordinates.
    if (!normalIndex.getCount() && !normalIndexFromSet) todo |= NORMAL_PENDING;
    if (!colorIndex.getCount()) todo |= COLOR_PENDING;
    if (!texCoordIndex.getCount()) todo |= TEX_COORD_PENDING;
  }
  if (todo & NORMAL_PENDING)
    indexAttribute(static_cast<nrMFInt*>(getField(NORMAL_INDEX_FIELD)), ownNormalIndexSet, normalIndexSet,
                   NORMAL_INDEX_SET_FIELD);
  if (todo & COLOR_PENDING)
    indexAttribute(static_cast<nrMFInt*>(getField(COLOR_INDEX_FIELD)), ownColorIndexSet, colorIndexSet,
                   COLOR_INDEX_SET_FIELD);
  if (todo & TEX_COORD_PENDING)
    indexAttribute(static_cast<nrMFInt*>(getField(TEX_COORD_INDEX_FIELD)), ownTexCoordIndexSet, texCoordIndexSet,
                   TEX_COORD_INDEX_SET_FIELD);
}

nrIndexSet* nrIndexedFaceSet::useNormalIndexSet(int count) {
  pending &= ~NORMAL_PENDING;
  // Indices given to another holder stay as they are, matching the normals
  // it holds: this set fills new ones.
  if (ownNormalIndexSet && ownNormalIndexSet->getParentCount() > (normalIndexSet == ownNormalIndexSet ? 1 : 0)) {
    ownNormalIndexSet->unref();
    ownNormalIndexSet = nullptr;
  }
  if (!ownNormalIndexSet) {
    ownNormalIndexSet = new nrIndexSet;
    ownNormalIndexSet->ref();
  }
  if (normalIndexSet != ownNormalIndexSet) setNormalIndexSet(ownNormalIndexSet);
  ownNormalIndexSet->setCount(unsigned(count > 0 ? count : 0));
  normalIndexFromSet = true;
  propagateSideEffect(NORMAL_INDEX_FIELD);
  return ownNormalIndexSet;
}

// The list says no more than the index set and the lengths once every face
// ends with -1 (as scene files write them): it is freed then, and made again
// when it is next read. Large face sets keep their indices once, not twice.
void nrIndexedFaceSet::dropCoordIndex() {
  const int* list = coordIndex.getArray();
  unsigned n = coordIndex.getCount();
  if (n == 0 || list[n - 1] != -1) return;
  for (unsigned i = 0; i < n; ++i)
    if (list[i] < -1) return;
  coordIndex.setCount(0);
  coordIndex.setSize(0);
  coordIndexFromSet = true;
  propagateSideEffect(COORD_INDEX_FIELD);
}

// Read back into VRML form without reporting a change: the list only
// catches up with the index set it already describes, face by face.
void nrIndexedFaceSet::rebuildList(nrIntArray& list, const nrIntArray& flat) {
  unsigned corners = flat.getCount(), faces = lengths.getCount(), k = 0, slot = 0;
  list.setCount(0);
  list.setCount(corners + faces);
  int* out = list.getArray();
  for (unsigned f = 0; f < faces; ++f) {
    for (int c = 0; c < lengths[f] && k < corners; ++c) out[slot++] = flat[k++];
    out[slot++] = -1;
  }
  list.setCount(slot);
}

void nrIndexedFaceSet::copy(nrContainer* from, nrCloneTable* table) {
  if (!from || from == this) return;
  copyWithOwnIndexSets(from, table);
  // The lists arrive whole: none waits to be rebuilt from the index sets,
  // which are made again from them.
  coordIndexFromSet = normalIndexFromSet = false;
  schedule(ALL_PENDING);
}

void nrIndexedFaceSet::write(nrOutput* out) {
  static const short fields[] = {
      CCW_FIELD,         SOLID_FIELD,           CONVEX_FIELD,       CREASE_ANGLE_FIELD,     COORD_INDEX_FIELD,
      COLOR_INDEX_FIELD, TEX_COORD_INDEX_FIELD, NORMAL_INDEX_FIELD, COLOR_PER_VERTEX_FIELD, NORMAL_PER_VERTEX_FIELD};
  // A set whose culling came from its flags writes `solid` even when TRUE, since a file
  // without the field leaves culling to the context and would read back unculled.
  short keptFlag = getUserSetMask().isBitSet(CULL_FACE_SET_BIT) ? short(SOLID_FIELD) : short(-1);
  writeVRML(out, fields, int(sizeof fields / sizeof fields[0]), keptFlag);
}
