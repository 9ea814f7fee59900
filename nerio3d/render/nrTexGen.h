// Texture-coordinate generation for the four coordinates S, T, R and Q.
#pragma once

#include "nerio3d/fields/nrContainer.h"

class nrContext;

class nrTexGen : public nrContainer {
  NR_DECLARE_CONTAINER_TYPE(nrTexGen)

  enum ModeEnum { OFF, EYE_LINEAR, EYE_LINEAR_IDENT, OBJECT_LINEAR, SPHERE_MAP };
  enum { MODE_S, MODE_T, MODE_R, MODE_Q };

  nrTexGen() : nrTexGen(getClassType()) {}
  explicit nrTexGen(nrType* type) : nrContainer(type) { initFieldDefaults(classType); }

  void setModeS(ModeEnum mode) { setMode(MODE_S, mode); }
  void setModeT(ModeEnum mode) { setMode(MODE_T, mode); }
  void setModeR(ModeEnum mode) { setMode(MODE_R, mode); }
  void setModeQ(ModeEnum mode) { setMode(MODE_Q, mode); }
  ModeEnum getModeS() const { return static_cast<ModeEnum>(modeS); }
  ModeEnum getModeT() const { return static_cast<ModeEnum>(modeT); }
  ModeEnum getModeR() const { return static_cast<ModeEnum>(modeR); }
  ModeEnum getModeQ() const { return static_cast<ModeEnum>(modeQ); }

 protected:
  friend class nrContext;
  // Sends the generation modes and planes to OpenGL.
  virtual void draw(nrContext* context);

 private:
  void setMode(short coord, ModeEnum mode);

  int modeS, modeT, modeR, modeQ;
};
