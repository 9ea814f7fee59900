// The listener: where and facing which way the scene's sounds are heard.
#pragma once

#include "nerio3d/fields/nrContainer.h"
#include "nerio3d/math/nrRotation.h"
#include "nerio3d/math/nrVec3f.h"

class nrMicrophone : public nrContainer {
  NR_DECLARE_CONTAINER_TYPE(nrMicrophone)

  enum { POSITION, ORIENTATION };

  nrMicrophone() : nrMicrophone(getClassType()) {}
  explicit nrMicrophone(nrType* type);

  void setPosition(float x, float y, float z);
  void getPosition(float* x, float* y, float* z) const;
  void setOrientation(const nrRotation& rotation) { setFieldValue(orientation, rotation, ORIENTATION); }
  const nrRotation& getOrientation() const { return getFieldValue(orientation, ORIENTATION); }

 private:
  nrVec3f position;
  nrRotation orientation;
};
