// Fog node: the graphics context keeps a stack of them, scoped by environments.
#pragma once

#include "nerio3d/math/nrVec4f.h"
#include "nerio3d/nodes/nrNode.h"

class nrContext;

class nrFog : public nrNode {
  NR_DECLARE_CONTAINER_TYPE(nrFog)

  enum FogModeEnum { LINEAR_FOG, EXP_FOG, EXP2_FOG };
  enum { ON_FIELD = 2, MODE_FIELD, DENSITY_FIELD, START_FIELD, END_FIELD, INDEX_FIELD, COLOR_FIELD };

  nrFog() : nrFog(getClassType()) {}
  explicit nrFog(nrType* typeOfClass) : nrNode(typeOfClass) { initFieldDefaults(classType); }

  void setOn(unsigned char value) { setFieldValue(on, value, ON_FIELD); }
  unsigned char getOn() const { return getFieldValue(on, ON_FIELD); }
  void setMode(FogModeEnum value) { setFieldValue(mode, static_cast<int>(value), MODE_FIELD); }
  FogModeEnum getMode() const { return static_cast<FogModeEnum>(getFieldValue(mode, MODE_FIELD)); }
  void setDensity(float value) { setFieldValue(density, value, DENSITY_FIELD); }
  float getDensity() const { return getFieldValue(density, DENSITY_FIELD); }
  void setStart(float value) { setFieldValue(start, value, START_FIELD); }
  float getStart() const { return getFieldValue(start, START_FIELD); }
  void setEnd(float value) { setFieldValue(end, value, END_FIELD); }
  float getEnd() const { return getFieldValue(end, END_FIELD); }
  // The fog colour index in colour-index mode.
  void setIndex(float value) { setFieldValue(index, value, INDEX_FIELD); }
  float getIndex() const { return getFieldValue(index, INDEX_FIELD); }
  void setColor(float r, float g, float b, float a) { setColor(nrVec4f(r, g, b, a)); }
  void setColor(const nrVec4f& value) { setFieldValue(color, value, COLOR_FIELD); }
  const nrVec4f& getColor() const { return getFieldValue(color, COLOR_FIELD); }
  void getColor(nrVec4f& value) const { value = getColor(); }
  void getColor(float* r, float* g, float* b, float* a) const;

  // A fog met outside an environment becomes the current fog.
  nrTravDirective drawVisit(nrDrawAction* action) override;
  // Hands the fog to the context and loads its parameters when the
  // application has fog enabled and this fog is on.
  virtual void draw(nrDrawAction* action);

  // The context calls push when this fog becomes the top of its fog stack, and
  // pop on the fog that is the top again after dropped was popped.
  virtual void push(nrContext* context);
  virtual void pop(nrFog* dropped, nrContext* context);

 protected:
  unsigned char on;
  int mode;
  float density;
  float start;
  float end;
  float index;
  nrVec4f color;

  // Sends the mode, the scalar parameters and the colour; a fog subclass may
  // send more.
  virtual void define();

 private:
  // Applies the fog's on state and loads it when it is to be drawn.
  void apply(nrContext* context);
};
