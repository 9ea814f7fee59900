// A window with a box spun by a time sensor and a ball that lights up while
// the pointer is over it, through a touch sensor beside it. Frames run
// continuously; Escape closes the window, and so does the window's close
// button. With a number as argument the program quits after that many frames.
#include <cmath>
#include <cstdlib>

#include "nerio3d/nerio3d.h"

namespace {

struct Demo {
  nrWindow* window = nullptr;
  nrGroup* root = nullptr;
  nrPerspCamera* camera = nullptr;
  nrTouchSensor* touch = nullptr;
  nrMaterial* ballMaterial = nullptr;
  // Routes do not hold what they connect: the program holds the interpolator.
  nrOrientationInterpolator* turn = nullptr;
  int framesLeft = -1;
  bool quit = false;
};

nrShape* shapeOf(nrGeometry* geometry, nrMaterial* material) {
  nrAppearance* look = new nrAppearance;
  look->setLightEnable(1);
  look->setMaterial(material);
  nrShape* shape = new nrShape;
  shape->setAppearance(look);
  shape->addGeometry(geometry);
  return shape;
}

nrMaterial* colored(float r, float g, float b) {
  nrMaterial* m = new nrMaterial;
  m->setDiffuseColor(r, g, b);
  return m;
}

// A transform turning about y once every four seconds.
nrTransform* spinner(Demo& demo, nrNode* child) {
  nrTimeSensor* clock = new nrTimeSensor;
  clock->setCycleInterval(4);
  clock->setLoop(1);
  nrOrientationInterpolator* turn = demo.turn = new nrOrientationInterpolator;
  turn->ref();
  nrFloatArray keys;
  nrRotationArray angles;
  for (int i = 0; i <= 4; ++i) {
    keys.append(i / 4.0f);
    angles.append(nrRotation(0, 1, 0, float(M_PI) / 2 * i));
  }
  turn->setKey(keys);
  turn->setKeyValue(angles);
  nrTransform* t = new nrTransform;
  t->addChild(child);
  // The scene holds the sensor, which draws nothing.
  t->addChild(clock);
  clock->getField("fraction_changed")->connect(turn->getField("set_fraction"));
  turn->getField("value_changed")->connect(t->getField("set_rotation"));
  return t;
}

// Pointer records to the sensors, and the ball's colour from the sensor.
int frame(void* arg) {
  Demo* demo = static_cast<Demo*>(arg);
  const nrEventArray& events = demo->window->getEvents();
  for (unsigned i = 0; i < events.getCount(); ++i) {
    if (events[i]->kind == nrEvent::KEY_DOWN_EVENT && events[i]->key == 27) demo->quit = true;
    // The close button: the window goes as soon as this frame ends.
    if (events[i]->kind == nrEvent::CLOSE_EVENT) demo->window = nullptr;
  }
  nrWindow::updateSensors(demo->root, demo->camera);
  if (demo->touch->getIsOver())
    demo->ballMaterial->setDiffuseColor(1, 0.8f, 0.1f);
  else
    demo->ballMaterial->setDiffuseColor(0.2f, 0.3f, 0.9f);
  if (demo->framesLeft > 0 && --demo->framesLeft == 0) demo->quit = true;
  return 0;
}

// Draws once per pass; a window may only go away here, outside its own frame.
void render(void* arg) {
  Demo* demo = static_cast<Demo*>(arg);
  if (!demo->window) return;
  if (demo->quit) {
    delete demo->window;
    demo->window = nullptr;
    return;
  }
  nrWindow::makeCurrent(demo->window);
  nrWindow::getContext()->clear(nrContext::COLOR_CLEAR | nrContext::DEPTH_CLEAR, 0.1f, 0.1f, 0.12f, 1);
  nrDrawAction draw;
  draw.setCamera(demo->camera);
  demo->camera->draw(&draw);
  draw.apply(demo->root);
  nrWindow::swapBuffers();
}

}  // namespace

int main(int argc, char** argv) {
  Demo demo;
  if (argc > 1) demo.framesLeft = atoi(argv[1]);

  demo.root = new nrGroup;
  demo.root->ref();
  nrDirectionalLight* light = new nrDirectionalLight;
  light->setDirection(-0.3f, -0.4f, -1);
  demo.root->addChild(light);

  nrTransform* left = spinner(demo, shapeOf(new nrBox, colored(0.8f, 0.2f, 0.2f)));
  left->setTranslation(-1.6f, 0, 0);
  demo.root->addChild(left);

  demo.ballMaterial = colored(0.2f, 0.3f, 0.9f);
  demo.touch = new nrTouchSensor;
  nrTransform* right = new nrTransform;
  right->setTranslation(1.6f, 0, 0);
  right->addChild(shapeOf(new nrSphere, demo.ballMaterial));
  right->addChild(demo.touch);
  demo.root->addChild(right);

  demo.camera = new nrPerspCamera;
  demo.camera->ref();
  demo.camera->setPosition(0, 0, 8);

  nrWindow::initSize(600, 600);
  demo.window = new nrWindow("nerio3d: touch the ball");
  if (!demo.window->getThisWindowContext()) return 1;  // no display: the library said why
  nrWindow::setFrameFunc(frame, &demo);
  nrWindow::setRenderFunc(render, &demo);
  nrWindow::setFreeRun(1);
  nrWindow::mainLoop();

  demo.turn->unref();
  demo.camera->unref();
  demo.root->unref();
  return 0;
}
