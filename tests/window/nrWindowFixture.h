// Windows opened on the test's X server, with every record their event
// function was handed kept for the test; all of them are closed afterwards.
#pragma once

#include <gtest/gtest.h>

#include <cstdlib>
#include <memory>
#include <vector>

#include "nerio3d/window/nrWindow.h"
#include "nrOffscreenGL.h"
#include "nrXInput.h"

namespace nrtest {

// A record as the event function saw it, and the record object itself.
struct Seen {
  int kind, key, x, y;
  unsigned int buttons;
  const nrEvent* record;
};

// Keeps what the window's queue held at each call of its event function.
struct Recorder {
  nrWindow* window = nullptr;
  std::vector<Seen> seen;

  static void onEvents(void* self) {
    Recorder* r = static_cast<Recorder*>(self);
    const nrEventArray& events = r->window->getEvents();
    for (unsigned i = 0; i < events.getCount(); ++i) {
      const nrEvent* e = events[i];
      r->seen.push_back({e->kind, e->key, e->x, e->y, e->buttons, e});
    }
  }
  // The records of one kind, oldest first.
  std::vector<Seen> of(int kind) const {
    std::vector<Seen> out;
    for (const Seen& s : seen)
      if (s.kind == kind) out.push_back(s);
    return out;
  }
  size_t count(int kind) const { return of(kind).size(); }
};

class WindowTest : public testing::Test {
 protected:
  void SetUp() override {
    if (!getenv("DISPLAY")) GTEST_SKIP() << "no X display";
    ASSERT_TRUE(input.ready());
    // GLX unloads Mesa's driver at exit before the leak checker reports, which
    // then cannot name the driver's own leaks to suppress them. An offscreen
    // context keeps the driver loaded: EGL holds it for the life of the process.
    static nrtest::OffscreenGL keepDriverLoaded(1, 1);
    nrDrawable::releaseCurrent();
    // Clear of the corner where windows of other test programs open.
    nrWindow::initPosition(640, 200);
  }
  void TearDown() override {
    while (!nrWindow::getWindows().isEmpty())
      delete static_cast<nrWindowItem*>(nrWindow::getWindows().getFirst())->window;
    nrWindow::setFreeRun(0);
    nrWindow::setRenderFunc(nullptr, nullptr);
    nrWindow::initPosition(-1, -1);
    nrWindow::initSize(500, 500);
    nrWindow::pollEvents();
  }

  // A window whose records are kept, shown and drawn once before it returns.
  Recorder& open(const char* title = "nrWindowTest") {
    recorders.push_back(std::make_unique<Recorder>());
    Recorder& r = *recorders.back();
    r.window = new nrWindow(title);
    r.window->setEventFunc(Recorder::onEvents, &r);
    EXPECT_TRUE(pumpUntil([&] { return r.count(nrEvent::DISPLAY_EVENT) > 0; }));
    return r;
  }

  XInput input;
  std::vector<std::unique_ptr<Recorder>> recorders;
};

}  // namespace nrtest
