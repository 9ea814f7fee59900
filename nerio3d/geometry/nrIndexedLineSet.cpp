#include "nerio3d/geometry/nrIndexedLineSet.h"

#include "nerio3d/fields/nrMField.h"
#include "nerio3d/fields/nrSField.h"
#include "nerio3d/render/_nrGfx.h"
#include "nerio3d/render/nrGL.h"

NR_DEFINE_TYPE(nrIndexedLineSet, nrLineStripSet, "IndexedLineSet") {
  nrMFInt::addTypeField(type, "coordIndex", COORD_INDEX_FIELD, &nrIndexedLineSet::coordIndex);
  nrMFInt::addTypeField(type, "colorIndex", COLOR_INDEX_FIELD, &nrIndexedLineSet::colorIndex);
  nrSFUByte::addTypeField(type, "colorPerVertex", COLOR_PER_VERTEX_FIELD, 1, &nrIndexedLineSet::colorPerVertex);
}

nrIndexedLineSet::nrIndexedLineSet(nrType* type) : nrLineStripSet(type), ownColorIndexSet(nullptr) {
  initFieldDefaults(classType);
  setColorBind(PER_VERTEX_COLOR);
  setCoordIndexSet(new nrIndexSet);
}

nrIndexedLineSet::~nrIndexedLineSet() {
  if (ownColorIndexSet) ownColorIndexSet->unref();
  destroyFieldContents(classType);
}

void nrIndexedLineSet::fieldChanged(short index) {
  switch (index) {
    case COORD_INDEX_FIELD:
      if (!coordIndexSet) setCoordIndexSet(new nrIndexSet);
      setPrimCount(flattenVRMLIndices(static_cast<nrMFInt*>(getField(COORD_INDEX_FIELD)),
                                      static_cast<nrIndexSet*>(coordIndexSet),
                                      static_cast<nrMFInt*>(getField(STRIP_LENGTH_FIELD))));
      if (!colorIndex.getCount() && colorIndexSet != coordIndexSet)
        setColorIndexSet(static_cast<nrIndexSet*>(coordIndexSet));
      break;
    case COLOR_INDEX_FIELD:
      indexAttribute(static_cast<nrMFInt*>(getField(COLOR_INDEX_FIELD)), ownColorIndexSet, colorIndexSet,
                     COLOR_INDEX_SET_FIELD);
      break;
    case COLOR_PER_VERTEX_FIELD:
      setColorBind(colorPerVertex ? PER_VERTEX_COLOR : PER_PRIM_COLOR);
      break;
    default:
      nrLineStripSet::fieldChanged(index);
      return;
  }
  touchField(index);
}

void nrIndexedLineSet::draw(nrDrawAction* action) {
  nrContext* context = contextOf(action);
  if (!context) return;
  if (colorBinding == NO_COLOR) nrgl::Color3f(1, 1, 1);
  const _nrGfx& shadow = context->getShadowState();
  if (!shadow.texEnable && !shadow.lightEnable) {
    nrLineStripSet::draw(action);
    return;
  }
  context->pushState();
  unsigned char recording = context->getRecordEnable();
  context->setRecordEnable(0);
  context->setTexEnable(0);
  context->setLightEnable(0);
  context->setRecordEnable(recording);
  nrLineStripSet::draw(action);
  context->popState();
}

void nrIndexedLineSet::copy(nrContainer* from, nrCloneTable* table) {
  copyWithOwnIndexSets(from, table);
  fieldChanged(COORD_INDEX_FIELD);
  fieldChanged(COLOR_INDEX_FIELD);
}

void nrIndexedLineSet::write(nrOutput* out) {
  static const short fields[] = {COORD_INDEX_FIELD, COLOR_INDEX_FIELD, COLOR_PER_VERTEX_FIELD, WIDTH_FIELD};
  writeVRML(out, fields, int(sizeof fields / sizeof fields[0]));
}
