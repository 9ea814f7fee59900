// Pointer sensors in a drawn scene, driven by real pointer motion and buttons.
#include <cmath>
#include <functional>
#include <string>

#include "nerio3d/actions/nrDrawAction.h"
#include "nerio3d/events/nrPlaneSensor.h"
#include "nerio3d/events/nrSphereSensor.h"
#include "nerio3d/events/nrTouchSensor.h"
#include "nerio3d/geometry/nrBox.h"
#include "nerio3d/geometry/nrShape.h"
#include "nerio3d/geometry/nrSphere.h"
#include "nerio3d/nodes/nrTransform.h"
#include "nerio3d/render/nrContext.h"
#include "nerio3d/render/nrOrthoCamera.h"
#include "nrHeld.h"
#include "nrWindowFixture.h"

namespace {

// A touch sensor that lists the events it sends, and leaves its group (and
// with it the world) on sending leaveOn, or runs `instead` then.
class tstTouch : public nrTouchSensor {
 public:
  tstTouch() : nrTouchSensor(nrTouchSensor::getClassType()) {}
  std::string sent;
  // The sensors' names in the order they sent isOver 0, across sensors.
  static inline std::string outs;
  char name = '?';
  std::string leaveOn;
  std::function<void()> instead;

 protected:
  void fieldChanged(short index) override {
    std::string event;
    if (index == IS_OVER_FIELD) event = isOver ? "over " : "out ";
    if (index == IS_ACTIVE_FIELD) event = isActive ? "down " : "up ";
    if (index == TOUCH_TIME_FIELD) event = "touch ";
    sent += event;
    if (event == "out ") outs += name;
    nrTouchSensor::fieldChanged(index);
    if (event.empty() || event != leaveOn) return;
    if (instead) return instead();
    nrGroup* group = static_cast<nrGroup*>(getParent(0));
    group->removeChild(group->findChild(this));
  }
};

nrTransform* placed(float x, float y, std::initializer_list<nrNode*> children) {
  nrTransform* t = new nrTransform;
  t->setTranslation(x, y, 0);
  for (nrNode* c : children) t->addChild(c);
  return t;
}

nrShape* shapeOf(nrGeometry* g) {
  nrShape* s = new nrShape;
  s->addGeometry(g);
  return s;
}

// A flat 2 x 2 tile, 0.2 deep, facing the camera.
nrShape* tile() {
  nrBox* box = new nrBox;
  box->setSize(nrVec3f(2, 2, 0.2f));
  return shapeOf(box);
}

// Ten units square seen face-on through a 500 x 500 window: 50 pixels a unit,
// the origin in the middle. Tiles with a touch sensor at (-2.5, 2.5) and a
// disabled one at (2.5, 2.5) below a touch sensor at the root; a tile at
// (0, -2.5) moved by a plane sensor beside it; a ball of radius 1 at
// (3.5, -3) with a sphere sensor.
class PointerSensors : public nrtest::WindowTest {
 protected:
  void SetUp() override {
    WindowTest::SetUp();
    if (IsSkipped()) return;
    camera = nrtest::held<nrOrthoCamera>();
    root = nrtest::held<nrGroup>();
    outer = new tstTouch;
    inner = new tstTouch;
    disabled = new tstTouch;
    plane = new nrPlaneSensor;
    dragged = new nrTransform;
    sphere = new nrSphereSensor;
    camera->setWidth(10);
    camera->setHeight(10);
    camera->setPosition(0, 0, 10);
    disabled->setEnabled(0);
    nrSphere* ball = new nrSphere;
    ball->setRadius(1);
    for (nrNode* n : std::initializer_list<nrNode*>{
             outer, placed(-2.5f, 2.5f, {tile(), inner}), placed(2.5f, 2.5f, {tile(), disabled}),
             placed(0, 0, {plane, dragged}), placed(3.5f, -3, {shapeOf(ball), sphere})})
      root->addChild(n);
    dragged->addChild(placed(0, -2.5f, {tile()}));
    plane->connect(nrPlaneSensor::TRANSLATION_FIELD, dragged, nrTransform::TRANSLATION_FIELD);

    nrWindow::initSize(500, 500);
    window = open("sensors").window;
    window->setEventFunc(sense, this);
    nrWindow::setRenderFunc(draw, this);
  }
  void TearDown() override {
    if (!IsSkipped()) {
      input.button(1, false);
      nrtest::unref(root, camera);
    }
    WindowTest::TearDown();
  }

  static void sense(void* self) {
    PointerSensors* t = static_cast<PointerSensors*>(self);
    nrWindow::updateSensors(t->root, t->camera);
  }
  static void draw(void* self) {
    PointerSensors* t = static_cast<PointerSensors*>(self);
    nrWindow::getContext()->clear(nrContext::COLOR_CLEAR | nrContext::DEPTH_CLEAR);
    nrDrawAction action;
    action.setCamera(t->camera);
    t->camera->draw(&action);
    action.apply(t->root);
    nrWindow::swapBuffers();
  }

  // Moves the pointer over world point (x, y) and waits until the window saw it.
  void hover(float x, float y) { hoverPixel(int((x + 5) * 50), 499 - int((y + 5) * 50)); }
  void hoverPixel(int x, int y) {
    input.moveTo(window, x, y);
    EXPECT_TRUE(nrtest::pumpUntil([&] { return nrWindow::getMouseX() == x && nrWindow::getMouseY() == 499 - y; }));
  }
  void left(bool down) {
    input.button(1, down);
    EXPECT_TRUE(nrtest::pumpUntil([&] { return nrWindow::getMouseButtons() == (down ? 1u : 0u); }));
  }

  nrOrthoCamera* camera = nullptr;
  nrGroup* root = nullptr;
  tstTouch *outer = nullptr, *inner = nullptr, *disabled = nullptr;
  nrPlaneSensor* plane = nullptr;
  nrTransform* dragged = nullptr;
  nrSphereSensor* sphere = nullptr;
  nrWindow* window = nullptr;
};

TEST_F(PointerSensors, TouchSensorsNearestTheGeometryReportHoverPressAndTouch) {
  hover(-2.5f, 2.5f);
  EXPECT_EQ(inner->sent, "over ");
  // In the sensor's coordinates, on the tile's front face, at the pixel's centre.
  EXPECT_TRUE(inner->getHitPoint().almostEqual(nrVec3f(0.01f, 0.01f, 0.1f), 1e-4f));
  EXPECT_TRUE(inner->getHitNormal().almostEqual(nrVec3f(0, 0, 1), 1e-4f));
  nrVec3f point;
  inner->getHitPoint(point);
  EXPECT_EQ(point, inner->getHitPoint());
  // A copy made under the pointer is over too, until the pointer leaves it.
  auto* copy = static_cast<nrTouchSensor*>(inner->clone(nrContainer::SHALLOW_CLONE));
  copy->ref();
  EXPECT_EQ(copy->getIsOver(), 1);

  left(true);
  left(false);
  EXPECT_EQ(inner->sent, "over down up touch ");
  EXPECT_NEAR(double(inner->getTouchTime()), double(nrTime::getTimeOfDay()), 5);
  hover(0, 0);
  EXPECT_EQ(inner->sent, "over down up touch out ");
  EXPECT_EQ(copy->getIsOver(), 0);
  copy->unref();

  // Pressed over the tile, released off it: no touch.
  inner->sent.clear();
  hover(-2.5f, 2.5f);
  left(true);
  hover(0, 0);
  left(false);
  EXPECT_EQ(inner->sent, "over down out up ");
  EXPECT_EQ(outer->sent, "");

  // The disabled sensor is passed over and the next level up answers.
  hover(2.5f, 2.5f);
  EXPECT_EQ(disabled->sent, "");
  EXPECT_EQ(outer->sent, "over ");
  hover(-2.5f, 2.5f);
  EXPECT_EQ(outer->sent, "over out ");
  EXPECT_EQ(inner->sent, "over down out up over ");

  // Sensors leaving together: the last entry of the over list moves into the
  // place of each one that leaves, and that place is looked at again.
  nrGroup* group = static_cast<nrGroup*>(inner->getParent(0));
  tstTouch *b = new tstTouch, *c = new tstTouch;
  inner->name = 'a', b->name = 'b', c->name = 'c';
  group->addChild(b);
  group->addChild(c);
  hover(-2, 2.5f);
  tstTouch::outs.clear();
  hover(0, 0);
  EXPECT_EQ(tstTouch::outs, "acb");
}

// Sensors that delete themselves from their events, beside inner: one on
// release, one when the pointer leaves. inner still gets every event.
TEST_F(PointerSensors, SensorsDeletingThemselvesLeaveTheOthersTheirEvents) {
  nrGroup* group = static_cast<nrGroup*>(inner->getParent(0));
  for (const char* leaveOn : {"up ", "out "}) {
    tstTouch* quitter = new tstTouch;
    quitter->leaveOn = leaveOn;
    group->insertChild(0, quitter);
  }
  hover(-2.5f, 2.5f);
  left(true);
  left(false);
  hover(0, 0);
  EXPECT_EQ(inner->sent, "over down up touch out ");
  EXPECT_EQ(group->getNumChildren(), 2);

  // One that drops the whole scene and the camera on the press, with a drag
  // and the release queued behind it: the path of the press and the scene of
  // the records left stay until they are handled.
  tstTouch* dropper = new tstTouch;
  dropper->leaveOn = "down ";
  dropper->instead = [this] {
    nrtest::unref(root, camera);
    root = nrtest::held<nrGroup>();
    camera = nrtest::held<nrOrthoCamera>();
  };
  group->insertChild(0, dropper);
  nrWindow::setFreeRun(1);
  hover(-2.5f, 2.5f);
  left(true);
  hover(-2, 2.5f);
  left(false);
  nrWindow::setCurrent(window);
  window->processEvents();
  EXPECT_EQ(root->getNumChildren(), 0);
}

TEST_F(PointerSensors, DragSensorsFollowThePointerOnTheirPlaneAndSphere) {
  // 50 pixels to the right move the tile one unit; the offset follows.
  hover(0, -2.5f);
  left(true);
  hover(1, -2.5f);
  left(false);
  EXPECT_TRUE(dragged->getTranslation().almostEqual(nrVec3f(1, 0, 0), 1e-4f));
  // The front face, under the centre of the pixel now under the pointer.
  EXPECT_TRUE(plane->getTrackPoint().almostEqual(nrVec3f(1.01f, -2.49f, 0.1f), 1e-4f));
  EXPECT_TRUE(plane->getOffset().almostEqual(nrVec3f(1, 0, 0), 1e-4f));

  // The next drag goes on from there, held above y = -0.5.
  plane->setMinPosition(-10, -0.5f);
  plane->setMaxPosition(10, 10);
  hover(1, -2.5f);
  left(true);
  // A copy made during the grab drags along and is released with it.
  auto* copy = static_cast<nrPlaneSensor*>(plane->clone(nrContainer::SHALLOW_CLONE));
  copy->ref();
  hover(1, -3.5f);
  left(false);
  EXPECT_TRUE(dragged->getTranslation().almostEqual(nrVec3f(1, -0.5f, 0), 1e-4f));
  EXPECT_EQ(plane->getIsActive(), 0);
  EXPECT_EQ(copy->getIsActive(), 0);
  EXPECT_TRUE(copy->getTranslation().almostEqual(nrVec3f(1, -0.5f, 0), 1e-4f));
  copy->unref();

  // Half a unit to the right from the middle of the ball turns it about y by
  // the angle between the grabbed and the followed point.
  hover(3.5f, -3);
  left(true);
  hover(4, -3);
  left(false);
  nrRotation turn = sphere->getRotation();
  EXPECT_TRUE(turn.axis.almostEqual(nrVec3f(0, 1, 0), 0.02f));
  const float radius = sphere->getTrackPoint().length();
  EXPECT_NEAR(turn.angle, std::asin(0.51f / radius) - std::asin(0.01f / radius), 0.01f);
}

}  // namespace
