#include <gtest/gtest.h>

#include "nerio3d/fields/nrMField.h"
#include "nerio3d/fields/nrSField.h"
#include "nerio3d/nodes/nrGroup.h"

namespace {

// In a fresh process nothing is registered before initClasses, so the
// dispatch-table columns show the registration order.
int registrationOrderFault() {
  nrObject::initClasses();
  nrType* order[] = {nrSFRotation::classType, nrSFSphereBound::classType, nrSFBoxBound::classType,
                     nrSFString::classType, nrMFString::classType, nrType::getType("LineStripSet"),
                     nrType::getType("IndexedLineSet"), nrType::getType("TriSet"), nrType::getType("PolySet"),
                     nrType::getType("IndexedFaceSet"), nrType::getType("Camera"),
                     nrType::getType("OrthoCamera"), nrType::getType("PerspCamera"), nrType::getType("nrAction"),
                     nrType::getType("TransformAction"), nrType::getType("nrVFCullAction"),
                     nrType::getType("nrDrawAction"), nrType::getType("IsectAction"),
                     nrType::getType("SoundAction"), nrType::getType("Hit"), nrType::getType("Node"),
                     nrType::getType("Group"), nrType::getType("Switch"), nrType::getType("Collision"),
                     nrType::getType("Inline"), nrType::getType("Transform"), nrType::getType("Environment"),
                     nrType::getType("Billboard")};
  int last = -1;
  for (int i = 0; i < int(sizeof(order) / sizeof(order[0])); ++i) {
    if (!order[i] || order[i]->getObjectIndex() <= last) return i + 1;
    last = order[i]->getObjectIndex();
  }
  if (nrType::getType("nrSphereBound") != nrSFSphereBound::classType) return 120;
  if (nrType::getType("Node")->getParent() != nrContainer::classType) return 121;
  if (nrType::getType("Group")->getParent() != nrNode::classType) return 122;
  if (nrType::getType("nrAction")->getParent() != nrObject::classType) return 123;
  if (nrType::getType("IsectAction")->getParent() != nrType::getType("TransformAction")) return 124;
  if (nrType::getType("PerspCamera")->getParent() != nrType::getType("Camera")) return 125;
  if (nrType::getType("Transform")->getParent() != nrType::getType("Group")) return 126;
  if (nrType::getType("FrustumCamera") || nrType::getType("CompileAction") || nrType::getType("LOD") ||
      nrType::getType("Fog"))
    return 127;
  if (nrType::getType("Inline")->getParent() != nrType::getType("Switch")) return 128;
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
