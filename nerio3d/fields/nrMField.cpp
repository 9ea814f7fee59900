#include "nerio3d/fields/nrMField.h"

NR_DEFINE_TYPE(nrMField, nrField, "nrMField") {}
NR_DEFINE_TYPE(nrMFByte, nrMField, "nrByte") {}
NR_DEFINE_TYPE(nrMFInt, nrMField, "nrInt") {}
NR_DEFINE_TYPE(nrMFFloat, nrMField, "nrFloat") {}
NR_DEFINE_TYPE(nrMFMatrix4f, nrMField, "nrMatrix4f") {}
NR_DEFINE_TYPE(nrMFRotation, nrMField, "nrRotation") {}
NR_DEFINE_TYPE(nrMFVec2f, nrMField, "nrVec2f") {}
NR_DEFINE_TYPE(nrMFVec3f, nrMField, "nrVec3f") {}
NR_DEFINE_TYPE(nrMFVec3s, nrMField, "nrVec3s") {}
NR_DEFINE_TYPE(nrMFVec4f, nrMField, "nrVec4f") {}
NR_DEFINE_TYPE(nrMFString, nrMField, "nrString") {}
