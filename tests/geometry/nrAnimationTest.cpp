// A time sensor routed through an interpolator into a transform moves a drawn
// shape: frames at two chosen times show it where the interpolation puts it.
#include <cmath>

#include "nerio3d/events/nrPositionInterpolator.h"
#include "nerio3d/events/nrTimeSensor.h"
#include "nerio3d/geometry/nrBox.h"
#include "nerio3d/geometry/nrShape.h"
#include "nerio3d/nodes/nrTransform.h"
#include "nerio3d/render/nrAppearance.h"
#include "nerio3d/render/nrMaterial.h"
#include "nerio3d/render/nrPerspCamera.h"
#include "nrGeometryFixture.h"

namespace {

class Animation : public nrtest::GeometryTest {};

TEST_F(Animation, RoutedTimeMovesTheTransformAndItsPixels) {
  nrTimeSensor* clock = make<nrTimeSensor>();
  clock->setCycleInterval(2);
  clock->setLoop(1);
  nrPositionInterpolator* path = make<nrPositionInterpolator>();
  nrFloatArray keys;
  keys.append(0);
  keys.append(1);
  nrVec3fArray places;
  places.append(nrVec3f(-2, 0, 0));
  places.append(nrVec3f(2, 0, 0));
  path->setKey(keys);
  path->setKeyValue(places);

  // Lit without lights: only the emissive red (and the ambient share of the red diffuse) shows.
  nrAppearance* red = make<nrAppearance>();
  red->setLightEnable(1);
  nrMaterial* material = make<nrMaterial>();
  material->setDiffuseColor(nrVec3f(1, 0, 0));
  material->setEmissiveColor(nrVec3f(1, 0, 0));
  red->setMaterial(material);
  nrShape* shape = make<nrShape>();
  shape->setAppearance(red);
  shape->addGeometry(make<nrBox>());
  nrTransform* mover = make<nrTransform>();
  mover->addChild(shape);

  clock->getField("fraction_changed")->connect(path->getField("set_fraction"));
  path->getField("value_changed")->connect(mover->getField("set_translation"));

  nrPerspCamera* camera = make<nrPerspCamera>();
  camera->setPosition(0, 0, 10);
  action->setCamera(camera);
  // Screen columns of x = -1 and x = +1 on the plane z = 0.
  const float perUnit = SIZE / (2 * 10 * std::tan(float(M_PI) / 8));
  const int left = int(SIZE / 2 - perUnit), right = int(SIZE / 2 + perUnit), row = SIZE / 2;

  struct Frame { double time; float x; };
  for (Frame f : {Frame{0.5, -1}, Frame{1.5, 1}}) {
    nrTimeSensor::updateSensors(f.time);
    context->clear(nrContext::COLOR_CLEAR | nrContext::DEPTH_CLEAR);
    camera->draw(action);
    action->apply(mover);
    nrMatrix4f m;
    mover->getMatrix(m);
    EXPECT_FLOAT_EQ(m[3][0], f.x) << f.time;
    EXPECT_EQ(pixel(left, row), f.x < 0 ? RED : BLACK) << f.time;
    EXPECT_EQ(pixel(right, row), f.x > 0 ? RED : BLACK) << f.time;
  }
}

}  // namespace
