#include <gtest/gtest.h>

#include "nerio3d/core/nrType.h"
#include "nerio3d/fields/nrContainer.h"
#include "nerio3d/window/nrEvent.h"
#include "nerio3d/window/nrWindow.h"

namespace {

// In a fresh process the dispatch-table columns show the registration order.
int sensorRegistrationFault() {
  nrObject::initClasses();
  const char* order[] = {"TimeSensor", "PickSensor", "TouchSensor", "SphereSensor", "PlaneSensor", "Interpolator"};
  int last = -1;
  for (int i = 0; i < 6; ++i) {
    nrType* t = nrType::getType(order[i]);
    if (!t || t->getObjectIndex() <= last) return i + 1;
    last = t->getObjectIndex();
  }
  if (nrType::getType("PickSensor")->getParent() != nrType::getType("Node")) return 10;
  for (const char* derived : {"TouchSensor", "SphereSensor", "PlaneSensor"})
    if (nrType::getType(derived)->getParent() != nrType::getType("PickSensor")) return 11;
  // Outside the table: registered on first use, the record below the container type.
  if (nrType::getType("Event") || nrType::getType("Window")) return 12;
  if (nrEvent::getClassType()->getParent() != nrContainer::getClassType()) return 13;
  if (nrWindow::getClassType()->getParent() != nrObject::getClassType()) return 14;
  return 0;
}

}  // namespace

TEST(nrPickSensorTypes, RegisterAfterTheTimeSensorInTableOrder) {
  GTEST_FLAG_SET(death_test_style, "threadsafe");
  EXPECT_EXIT(exit(sensorRegistrationFault()), testing::ExitedWithCode(0), "");
}
