// A group whose lights and fog affect only its own children.
#pragma once

#include "nerio3d/nodes/nrGroup.h"

class nrFog;
class nrLight;

class nrEnvironment : public nrGroup {
  NR_DECLARE_CONTAINER_TYPE(nrEnvironment)

  enum { LIGHT_FIELD = 3, FOG_FIELD };

  nrEnvironment() : nrEnvironment(getClassType()) {}
  explicit nrEnvironment(nrType* type);
  ~nrEnvironment() override;

  void addLight(nrLight* light);
  // Removes the first occurrence; false when light is not one of the lights.
  bool removeLight(nrLight* light);
  int getNumLights() const { return static_cast<int>(getFieldValue(light, LIGHT_FIELD).getCount()); }
  // Null for an index out of range.
  nrLight* getLight(int i) const;
  void setFog(nrFog* fog);
  nrFog* getFog() const;

  // Pushes the context's lights and fog, places this environment's lights and
  // fog, draws the children and pops both again.
  nrTravDirective drawVisit(nrDrawAction* action) override;
  void fieldChanged(short index) override;

 protected:
  nrRefArray light;
  nrContainer* fog;
};
