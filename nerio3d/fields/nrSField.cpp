#include "nerio3d/fields/nrSField.h"

void nrFieldValueWrite(nrOutput* out, unsigned char v) { fprintf(out->getStream(), "0x%x", v); }
void nrFieldValueWrite(nrOutput* out, short v) { fprintf(out->getStream(), "%d", v); }
void nrFieldValueWrite(nrOutput* out, int v) { fprintf(out->getStream(), "%d", v); }
void nrFieldValueWrite(nrOutput* out, unsigned int v) { fprintf(out->getStream(), "0x%x", v); }
void nrFieldValueWrite(nrOutput* out, float v) { fprintf(out->getStream(), "%f", v); }
void nrFieldValueWrite(nrOutput* out, double v) { fprintf(out->getStream(), "%lf", v); }

bool nrSFEnum::writeValue(nrOutput* out, const int& v, const nrFieldInfo* info) {
  const char* name = info->findEnum(v);
  if (name) fputs(name, out->getStream());
  return name != nullptr;
}

NR_DEFINE_TYPE(nrSFUByte, nrField, "nrUByte") {}
NR_DEFINE_TYPE(nrSFShort, nrField, "nrShort") {}
NR_DEFINE_TYPE(nrSFInt, nrField, "nrInt") {}
NR_DEFINE_TYPE(nrSFUInt, nrField, "nrUInt") {}
NR_DEFINE_TYPE(nrSFFloat, nrField, "nrFloat") {}
NR_DEFINE_TYPE(nrSFDouble, nrField, "nrDouble") {}
NR_DEFINE_TYPE(nrSFEnum, nrField, "nrEnum") {}
NR_DEFINE_TYPE(nrSFVec2f, nrField, "nrVec2f") {}
NR_DEFINE_TYPE(nrSFVec3f, nrField, "nrVec3f") {}
NR_DEFINE_TYPE(nrSFVec3s, nrField, "nrVec3s") {}
NR_DEFINE_TYPE(nrSFVec4f, nrField, "nrVec4f") {}
NR_DEFINE_TYPE(nrSFVec4ub, nrField, "nrVec4ub") {}
NR_DEFINE_TYPE(nrSFBitMask, nrField, "nrBitMask") {}
NR_DEFINE_TYPE(nrSFName, nrField, "nrName") {}
NR_DEFINE_TYPE(nrSFMatrix4f, nrField, "nrMatrix4f") {}
NR_DEFINE_TYPE(nrSFRotation, nrField, "nrRotation") {}
NR_DEFINE_TYPE(nrSFSphereBound, nrField, "nrSphereBound") {}
NR_DEFINE_TYPE(nrSFBoxBound, nrField, "nrBoxBound") {}
NR_DEFINE_TYPE(nrSFString, nrField, "nrString") {}
NR_DEFINE_TYPE(nrSFTime, nrField, "nrTime") {}
