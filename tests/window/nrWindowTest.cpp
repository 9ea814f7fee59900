#include <GL/freeglut.h>

#include <chrono>
#include <climits>
#include <tuple>

#include "nerio3d/platform/nrWindowSystem.h"
#include "nerio3d/render/nrContext.h"
#include "nrCapture.h"
#include "nrWindowFixture.h"

#include <GL/glx.h>

using nrtest::pumpUntil;
using nrtest::Recorder;
using nrtest::Seen;

namespace {

// The enumerations carry the toolkit's codes.
static_assert(nrWindow::WINDOW_HEIGHT_QUERY == GLUT_WINDOW_HEIGHT && nrWindow::SCREEN_WIDTH_QUERY == GLUT_SCREEN_WIDTH &&
              nrWindow::INIT_DISPLAY_MODE_QUERY == GLUT_INIT_DISPLAY_MODE &&
              nrWindow::ELAPSED_TIME_QUERY == GLUT_ELAPSED_TIME && nrWindow::WINDOW_CURSOR_QUERY == GLUT_WINDOW_CURSOR &&
              nrWindow::HAS_KEYBOARD_DQUERY == GLUT_HAS_KEYBOARD &&
              nrWindow::JOYSTICK_POLL_RATE_DQUERY == GLUT_JOYSTICK_POLL_RATE &&
              (nrWindow::DOUBLE_MODE | nrWindow::DEPTH_MODE | nrWindow::MULTISAMPLE_MODE) == 146 &&
              nrWindow::INDEX_MODE == GLUT_INDEX && nrWindow::STEREO_MODE == GLUT_STEREO);

using WindowInput = nrtest::WindowTest;
using WindowLoop = nrtest::WindowTest;

// A frame function that asks for more frames three times, then for none, and
// closes its window when input brings it back.
struct Frames {
  nrtest::XInput* input;
  std::vector<int> freeRunSeen;
  std::vector<int> renders;
  std::vector<bool> closing;

  static int frame(void* self) {
    Frames* f = static_cast<Frames*>(self);
    f->freeRunSeen.push_back(nrWindow::getFreeRun());
    const nrEventArray& events = nrWindow::getCurrent()->getEvents();
    bool close = false;
    for (unsigned i = 0; i < events.getCount(); ++i) close = close || events[i]->kind == nrEvent::CLOSE_EVENT;
    f->closing.push_back(close);
    if (f->freeRunSeen.size() < 4) return 0;
    if (f->freeRunSeen.size() == 4) f->input->requestClose(nrWindow::getCurrent());
    return 1;
  }
  static void render(void* self) {
    Frames* f = static_cast<Frames*>(self);
    f->renders.push_back(static_cast<int>(f->freeRunSeen.size()));
  }
};

}  // namespace

TEST_F(WindowInput, PointerAndKeyRecordsFlipYKeepButtonMasksAndRecycleRecords) {
  nrWindow::initSize(400, 500);
  Recorder& r = open();
  nrWindow* w = r.window;
  EXPECT_EQ(std::tuple(nrWindow::getCurrent(), nrWindow::getContext(), nrContext::getCurrent(), nrWindow::isRGB()),
            std::tuple(w, w->getThisWindowContext(), w->getThisWindowContext(), 1));
  auto click = [&](int x, int y) {
    const size_t before = r.count(nrEvent::BUTTON_UP_EVENT);
    input.moveTo(w, x, y);
    input.button(1, true);
    input.button(1, false);
    EXPECT_TRUE(pumpUntil([&] { return r.count(nrEvent::BUTTON_UP_EVENT) > before; }));
    return r.of(nrEvent::BUTTON_DOWN_EVENT).back();
  };
  // Top-left and bottom-left pixels of a 500-pixel-high window.
  EXPECT_EQ(click(0, 0).y, 499);
  Seen bottom = click(0, 499);
  EXPECT_EQ(std::tuple(bottom.x, bottom.y, nrWindow::getMouseY()), std::tuple(0, 0, 0));

  // Left down, right down, drag, left up: one button per press and release,
  // every button held while dragging; the right one is still held.
  r.seen.clear();
  input.moveTo(w, 100, 100);
  input.button(1, true);
  input.button(3, true);
  input.moveTo(w, 110, 120);
  input.button(1, false);
  ASSERT_TRUE(pumpUntil([&] { return r.count(nrEvent::BUTTON_UP_EVENT) == 1; }));
  std::vector<Seen> presses = r.of(nrEvent::BUTTON_DOWN_EVENT);
  ASSERT_EQ(presses.size(), 2u);
  EXPECT_EQ(std::pair(presses[0].buttons, presses[1].buttons), std::pair(1u, 4u));
  ASSERT_FALSE(r.of(nrEvent::MOTION_EVENT).empty());
  const Seen drag = r.of(nrEvent::MOTION_EVENT).back();
  EXPECT_EQ(std::pair(drag.buttons, drag.y), std::pair(5u, 379));
  EXPECT_EQ(std::pair(r.of(nrEvent::BUTTON_UP_EVENT)[0].buttons, nrWindow::getMouseButtons()), std::pair(1u, 4u));
  input.button(3, false);
  ASSERT_TRUE(pumpUntil([&] { return nrWindow::getMouseButtons() == 0; }));

  // A wheel notch and a key, at the pointer.
  r.seen.clear();
  input.button(4, true);
  input.button(4, false);
  input.key("a", true);
  input.key("a", false);
  ASSERT_TRUE(pumpUntil([&] { return r.count(nrEvent::KEY_UP_EVENT) == 1; }));
  ASSERT_EQ(r.count(nrEvent::BUTTON_DOWN_EVENT), 1u);
  for (int kind : {nrEvent::BUTTON_DOWN_EVENT, nrEvent::BUTTON_UP_EVENT})
    EXPECT_EQ(r.of(kind)[0].buttons, unsigned(nrEvent::WHEEL_UP_BUTTON));
  Seen key = r.of(nrEvent::KEY_DOWN_EVENT)[0];
  EXPECT_EQ(std::tuple(key.key, key.x, key.y), std::tuple('a', 110, 379));
  // Special keys carry the toolkit's key code.
  input.key("F1", true);
  input.key("F1", false);
  ASSERT_TRUE(pumpUntil([&] { return r.count(nrEvent::SPECIAL_UP_EVENT) == 1; }));
  for (int kind : {nrEvent::SPECIAL_DOWN_EVENT, nrEvent::SPECIAL_UP_EVENT}) {
    Seen special = r.of(kind)[0];
    EXPECT_EQ(std::tuple(special.key, special.x, special.y), std::tuple(GLUT_KEY_F1, 110, 379));
  }

  // Each record went back to the pool before the next came: the display
  // record is the one the last click used, with that click's position.
  Seen last = click(7, 8);
  glutPostRedisplay();
  ASSERT_TRUE(pumpUntil([&] { return r.seen.back().kind == nrEvent::DISPLAY_EVENT; }));
  EXPECT_EQ(r.seen.back().record, last.record);
  EXPECT_EQ(std::pair(last.record->x, last.record->y), std::pair(7, 491));
}

TEST_F(WindowInput, FullScreenBareWindowsAndTitles) {
  const int width = nrWindow::get(nrWindow::SCREEN_WIDTH_QUERY), height = nrWindow::get(nrWindow::SCREEN_HEIGHT_QUERY);
  ASSERT_GT(width, 0);
  EXPECT_EQ(nrWindow::checkDisplayMode(nrWindow::DOUBLE_MODE | nrWindow::DEPTH_MODE), 1);
  nrWindow::initPosition(0, 0);
  nrWindow::initSize(width, height);
  nrWindow* full = open("full").window;
  EXPECT_EQ(std::tuple(nrWindow::get(nrWindow::WINDOW_X_QUERY), nrWindow::get(nrWindow::WINDOW_Y_QUERY),
                       nrWindow::get(nrWindow::WINDOW_WIDTH_QUERY), nrWindow::get(nrWindow::WINDOW_HEIGHT_QUERY)),
            std::tuple(0, 0, width, height));
  EXPECT_EQ(nrWindow::get(GLUT_WINDOW_WIDTH), width) << "the toolkit's own code";
  EXPECT_EQ(input.decorations(full), 0);
  delete full;

  // Titles: a titled window keeps the window manager's frame; a null title
  // takes it away and is kept as "".
  nrWindow::initPosition(640, 200);
  nrWindow::initSize(200, 100);
  Recorder& placed = open("titled");
  nrWindow* titled = placed.window;
  EXPECT_EQ(input.decorations(titled), -1);
  // Moving and resizing act on the current window; the new size arrives as a
  // reshape record and flips later pointer positions.
  nrWindow::positionWindow(700, 300);
  nrWindow::reshapeWindow(150, 80);
  auto reshaped = [&] { return placed.of(nrEvent::RESHAPE_EVENT).back(); };
  EXPECT_TRUE(pumpUntil([&] {
    return placed.count(nrEvent::RESHAPE_EVENT) && reshaped().x == 150 && reshaped().y == 80 &&
           nrWindow::get(nrWindow::WINDOW_X_QUERY) == 700;
  }));
  // Sizes the X server refuses (it would end the program) are not passed on.
  nrWindow::reshapeWindow(0, 0);
  nrWindow::reshapeWindow(-5, 20);
  input.moveTo(titled, 5, 0);
  auto moved = [&] { return placed.of(nrEvent::PASSIVE_MOTION_EVENT).back(); };
  EXPECT_TRUE(pumpUntil([&] { return placed.count(nrEvent::PASSIVE_MOTION_EVENT) && moved().y == 79; }));
  nrWindow::setWindowTitle(nullptr);
  EXPECT_STREQ(titled->getTitle(), "");
  EXPECT_EQ(input.decorations(titled), 0);
  nrWindow::setWindowTitle("again");
  EXPECT_EQ(input.decorations(titled), 1);
  nrWindow* bare = open(nullptr).window;
  EXPECT_EQ(input.decorations(bare), 0);
  // A side beyond the platform's limit is made at the limit.
  nrWindow::initSize(INT_MAX, 40);
  open("wide");
  EXPECT_EQ(nrWindow::get(nrWindow::WINDOW_WIDTH_QUERY), nrWindowSystem::MAX_WINDOW_SIDE);
  EXPECT_EQ(nrtest::captureStderr([] { nrWindow::setDisplay(":7"); }),
            "(WARN, USAGE): the display \":7\" is not used: windows open on the display named by DISPLAY\n");
  // A mode that no pixel format has makes no window instead of ending the program.
  nrWindow::initDisplayMode(nrWindow::INDEX_MODE);
  nrWindow* none = nullptr;
  EXPECT_EQ(nrtest::captureStderr([&] { none = new nrWindow("index"); }),
            "(WARN, RESOURCE): no pixel format has the display mode 1: no window can be made\n");
  nrWindow::initDisplayMode(146);
  EXPECT_EQ(none->getThisWindowContext(), nullptr);
  delete none;
}

TEST_F(WindowLoop, FrameFunctionAnswersSwitchFreeRunAndCloseEndsTheLoop) {
  Frames frames{&input, {}, {}, {}};
  nrWindow::initSize(100, 100);
  new nrWindow("frames");
  nrWindow::setFrameFunc(Frames::frame, &frames);
  nrWindow::setRenderFunc(Frames::render, &frames);
  nrWindow::setFreeRun(1);
  nrWindow::mainLoop();

  // Frames 2 to 4 came from idle passes alone, each followed by one render;
  // frame 4 answered 1, so later frames came with input only (the last with
  // the close request), were never followed by a render, and the close took
  // the window away.
  ASSERT_GE(frames.freeRunSeen.size(), 5u);
  for (size_t i = 0; i < frames.freeRunSeen.size(); ++i) EXPECT_EQ(frames.freeRunSeen[i], i < 4) << i;
  EXPECT_EQ(frames.renders, (std::vector<int>{1, 2, 3, 4}));
  EXPECT_TRUE(frames.closing.back());
  EXPECT_EQ(nrWindow::getFreeRun(), 0);
  EXPECT_TRUE(nrWindow::getWindows().isEmpty());
  EXPECT_EQ(nrWindow::getCurrent(), nullptr);
}

TEST_F(WindowLoop, CloseRequestsAndMainLoopReturningWhenTheLastWindowGoes) {
  nrWindow::initSize(100, 100);
  Recorder& kept = open("kept");
  Recorder& gone = open("gone");
  kept.window->deleteOnClose(0);
  input.requestClose(kept.window);
  input.requestClose(gone.window);
  ASSERT_TRUE(pumpUntil([&] { return nrWindow::getWindows().getCount() == 1; }));
  EXPECT_EQ(kept.count(nrEvent::CLOSE_EVENT), 1u);
  EXPECT_EQ(gone.count(nrEvent::CLOSE_EVENT), 1u);
  EXPECT_EQ(static_cast<nrWindowItem*>(nrWindow::getWindows().getFirst())->window, kept.window);

  // The window system's close of the last window ends the loop, and the
  // program goes on with windows as before.
  kept.window->deleteOnClose(1);
  input.requestClose(kept.window);
  nrWindow::mainLoop();
  EXPECT_TRUE(nrWindow::getWindows().isEmpty());
  Recorder& after = open("after");
  EXPECT_EQ(nrWindow::getCurrent(), after.window);

  // A window the toolkit destroys behind the library's back is reported closed too.
  glutDestroyWindow(glutGetWindow());
  ASSERT_TRUE(pumpUntil([] { return nrWindow::getWindows().isEmpty(); }));
  EXPECT_EQ(after.count(nrEvent::CLOSE_EVENT), 1u);
}

TEST_F(WindowLoop, TimerTicksAtItsIntervalAndTheArmedOneExpiresOnceAfterDisable) {
  nrWindow::initSize(100, 100);
  Recorder& r = open("timer");
  using Clock = std::chrono::steady_clock;
  std::vector<Clock::time_point> ticks;
  const unsigned interval = 25;
  const Clock::time_point start = Clock::now();
  r.window->enableTimer(interval);
  ASSERT_TRUE(pumpUntil([&] {
    if (r.count(nrEvent::TIMER_EVENT) > ticks.size()) ticks.push_back(Clock::now());
    return ticks.size() == 4;
  }));
  // Each tick re-arms when it fires, so tick k comes no sooner than k intervals.
  for (size_t k = 0; k < ticks.size(); ++k)
    EXPECT_GE(std::chrono::duration_cast<std::chrono::milliseconds>(ticks[k] - start).count(), (k + 1) * interval - 1);
  EXPECT_LT(std::chrono::duration_cast<std::chrono::milliseconds>(ticks.back() - start).count(), 2000);

  r.window->disableTimer();
  const size_t ticked = r.count(nrEvent::TIMER_EVENT);
  EXPECT_EQ(nrWindowSystem::getPendingTimers(), 1);
  ASSERT_TRUE(pumpUntil([] { return nrWindowSystem::getPendingTimers() == 0; }));
  EXPECT_EQ(r.count(nrEvent::TIMER_EVENT), ticked);
}

// The application's functions delete windows, their own or others, while the
// library is still working on them; the loop goes on with those left.
TEST_F(WindowLoop, EventAndFrameFunctionsDeletingWindowsUnderThePass) {
  nrWindow::initSize(100, 100);
  struct Victims {
    nrWindow* first;
    nrWindow* second;
    static void eventDeletesOwn(void* self) {
      Victims* v = static_cast<Victims*>(self);
      delete v->first;
      v->first = nullptr;
    }
    // The first window's frame deletes the second one, listed after it in the
    // same idle pass, and then itself.
    static int frameDeletes(void* self) {
      Victims* v = static_cast<Victims*>(self);
      nrWindow*& victim = v->second ? v->second : v->first;
      delete victim;
      victim = nullptr;
      return 0;
    }
  };

  // Deleting a window leaves the current one current, its context bound; the
  // context of a window deleted, held elsewhere, is current no more.
  nrWindow* kept = open("kept").window;
  nrWindow* other = open("other").window;
  nrWindow::makeCurrent(kept);
  delete other;
  EXPECT_EQ(nrWindow::getCurrent(), kept);
  EXPECT_EQ(glXGetCurrentDrawable(), kept->getHWND());
  nrContext* held = kept->getThisWindowContext();
  held->ref();
  delete kept;
  EXPECT_EQ(nrContext::getCurrent(), nullptr);
  EXPECT_EQ(held->getDrawable(), nullptr) << "nor names the drawable gone with the window";
  held->unref();

  Victims victims{open("own").window, nullptr};
  victims.first->setEventFunc(Victims::eventDeletesOwn, &victims);
  glutPostRedisplay();
  ASSERT_TRUE(pumpUntil([&] { return !victims.first; }));
  EXPECT_TRUE(nrWindow::getWindows().isEmpty());

  victims.first = open("first").window;
  victims.second = open("second").window;
  nrWindow::setCurrent(victims.first);
  nrWindow::setFrameFunc(Victims::frameDeletes, &victims);
  nrWindow::setFreeRun(1);
  nrWindow::mainLoop();
  EXPECT_FALSE(victims.first || victims.second);
}
