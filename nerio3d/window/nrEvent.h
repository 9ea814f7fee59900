// One input event of a window, as the window queues it for the application.
// Records are recycled: a field that the kind does not set keeps what the
// record held before, so readers look only at the fields of the kind.
#pragma once

#include "nerio3d/core/nrObject.h"

class nrWindow;

class nrEvent : public nrObject {
  NR_DECLARE_TYPE(nrEvent)

  // What happened; the numbers are stable, applications switch on them.
  enum KindEnum {
    RESHAPE_EVENT = 0,         // x, y: the new width and height
    DISPLAY_EVENT = 1,         // the window must be drawn again
    CLOSE_EVENT = 2,           // the window system asks to close the window
    BUTTON_UP_EVENT = 3,       // x, y, buttons: the mask of that one button, modifiers
    BUTTON_DOWN_EVENT = 4,     // as BUTTON_UP_EVENT
    MOTION_EVENT = 5,          // x, y, buttons: every button held, modifiers
    PASSIVE_MOTION_EVENT = 6,  // x, y, buttons 0, modifiers
    KEY_DOWN_EVENT = 7,        // key (a character), x, y, buttons held, modifiers
    KEY_UP_EVENT = 8,          // as KEY_DOWN_EVENT
    SPECIAL_DOWN_EVENT = 9,    // key: the toolkit's special-key code (GLUT_KEY_F1 ...)
    SPECIAL_UP_EVENT = 10,     // as SPECIAL_DOWN_EVENT
    TIMER_EVENT = 11           // the window's timer expired
  };

  // Bits of buttons. The scroll wheel arrives as a press and a release of
  // WHEEL_UP_BUTTON or WHEEL_DOWN_BUTTON at the pointer, one pair per notch.
  enum ButtonEnum {
    LEFT_BUTTON = 1,
    MIDDLE_BUTTON = 2,
    RIGHT_BUTTON = 4,
    WHEEL_UP_BUTTON = 8,
    WHEEL_DOWN_BUTTON = 16
  };

  // Modifier bits (the toolkit's).
  enum ModifierEnum { SHIFT_MODIFIER = 1, CTRL_MODIFIER = 2, ALT_MODIFIER = 4 };

  nrEvent() : nrEvent(getClassType()) {}
  explicit nrEvent(nrType* typeOfClass) : nrObject(typeOfClass) {}

  int kind = 0;
  int key = 0;
  nrWindow* window = nullptr;
  // Window pixels from the bottom-left corner: y = 0 is the bottom row.
  int x = 0;
  int y = 0;
  unsigned int buttons = 0;
  int modifiers = 0;
};
