#include <gtest/gtest.h>

#include "nerio3d/fields/nrMField.h"
#include "nerio3d/fields/nrSField.h"
#include "nerio3d/nodes/nrGroup.h"

namespace {

// In a fresh process nothing is registered before initClasses, so the
// dispatch-table columns show the registration order.
int registrationOrderFault() {
  nrObject::initClasses();
  auto T = [](const char* name) { return nrType::getType(name); };
  nrType* order[] = {nrSFRotation::classType, nrSFSphereBound::classType, nrSFBoxBound::classType,
                     nrSFString::classType, nrMFString::classType, T("LineStripSet"), T("IndexedLineSet"),
                     T("TriSet"), T("PolySet"), T("IndexedFaceSet"), T("Camera"), T("OrthoCamera"),
                     T("PerspCamera"), T("nrAction"), T("TransformAction"), T("nrVFCullAction"), T("nrDrawAction"),
                     T("IsectAction"), T("SoundAction"), T("Hit"), T("Node"), T("Group"), T("Switch"),
                     T("Collision"), T("Inline"), T("Transform"), T("Environment"), T("Billboard")};
  int last = -1;
  for (int i = 0; i < int(sizeof(order) / sizeof(order[0])); ++i) {
    if (!order[i] || order[i]->getObjectIndex() <= last) return i + 1;
    last = order[i]->getObjectIndex();
  }
  if (T("nrSphereBound") != nrSFSphereBound::classType) return 120;
  if (T("Node")->getParent() != nrContainer::classType) return 121;
  if (T("Group")->getParent() != nrNode::classType) return 122;
  if (T("nrAction")->getParent() != nrObject::classType) return 123;
  if (T("IsectAction")->getParent() != T("TransformAction")) return 124;
  if (T("PerspCamera")->getParent() != T("Camera")) return 125;
  if (T("Transform")->getParent() != T("Group")) return 126;
  if (T("FrustumCamera") || T("CompileAction") || T("LOD") || T("Fog")) return 127;
  if (T("Inline")->getParent() != T("Switch")) return 128;
  return 0;
}

}  // namespace

TEST(nrInitClasses, RegistersNodesAndActionsInTheirPlaces) {
  GTEST_FLAG_SET(death_test_style, "threadsafe");
  EXPECT_EXIT(exit(registrationOrderFault()), testing::ExitedWithCode(0), "");
}

TEST(nrInitClasses, GroupsAndActionsRegisterTheContextFirst) {
  GTEST_FLAG_SET(death_test_style, "threadsafe");
  // A group built before anything else is registered brings the context's
  // type in ahead of its own.
  EXPECT_EXIT(
      {
        delete new nrGroup;
        nrType* context = nrType::getType("Context");
        exit(context && context->getObjectIndex() < nrGroup::classType->getObjectIndex() &&
                     context->getObjectIndex() < nrNode::classType->getObjectIndex()
                 ? 0
                 : 1);
      },
      testing::ExitedWithCode(0), "");
}
