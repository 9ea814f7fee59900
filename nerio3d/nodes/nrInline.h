// The scene of another file, loaded by the scene reader as this node's one
// child and shown once selected (setWhichChild(0)); until then it shows
// nothing.
#pragma once

#include "nerio3d/arrays/nrTypedArray.h"
#include "nerio3d/math/nrVec3f.h"
#include "nerio3d/nodes/nrSwitch.h"

class nrInline : public nrSwitch {
  NR_DECLARE_CONTAINER_TYPE(nrInline)

  enum { URL_FIELD = 4, BBOX_CENTER_FIELD, BBOX_SIZE_FIELD };

  nrInline() : nrInline(getClassType()) {}
  explicit nrInline(nrType* type);
  ~nrInline() override;

  // Sets element index of the URL list, growing it as needed.
  void setUrl(unsigned index, const char* text);
  const nrStringArray& getUrl() const;
  // The box the file declares around the loaded scene (a size of -1 declares
  // none); kept as given, the bound is computed from the child.
  void setBboxCenter(float x, float y, float z) { setFieldValue(bboxCenter, nrVec3f(x, y, z), BBOX_CENTER_FIELD); }
  void getBboxCenter(float* x, float* y, float* z) const { getVec(bboxCenter, BBOX_CENTER_FIELD, x, y, z); }
  void setBboxSize(float x, float y, float z) { setFieldValue(bboxSize, nrVec3f(x, y, z), BBOX_SIZE_FIELD); }
  void getBboxSize(float* x, float* y, float* z) const { getVec(bboxSize, BBOX_SIZE_FIELD, x, y, z); }

  // The url and the box only: the scene comes back from the url when the
  // text is read.
  void write(nrOutput* out) override;

 protected:
  nrStringArray url;
  nrVec3f bboxCenter;
  nrVec3f bboxSize;
};
