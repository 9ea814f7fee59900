#include "nerio3d/render/nrEnvironment.h"

#include <cstdio>

#include "nerio3d/actions/nrDrawAction.h"
#include "nerio3d/fields/nrMFRef.h"
#include "nerio3d/fields/nrSFRef.h"
#include "nerio3d/render/nrContext.h"
#include "nerio3d/render/nrFog.h"
#include "nerio3d/render/nrLight.h"

NR_DEFINE_TYPE(nrEnvironment, nrGroup, "Environment") {
  nrMFRef::addTypeField(type, "light", LIGHT_FIELD, nrLight::getClassType(), &nrEnvironment::light);
  // The fog field asks only for a node and fieldChanged refuses other nodes:
  // requiring the fog's own type would register the fog class with this one,
  // where it is meant to be registered by its first instance.
  nrSFRef::addTypeField(type, "fog", FOG_FIELD, nrNode::getClassType(), &nrEnvironment::fog);
}

nrEnvironment::nrEnvironment(nrType* type) : nrGroup(type) { initFieldDefaults(classType); }

nrEnvironment::~nrEnvironment() { destroyFieldContents(classType); }

void nrEnvironment::addLight(nrLight* value) {
  if (value) static_cast<nrMFRef*>(getField(LIGHT_FIELD))->append(value);
}

bool nrEnvironment::removeLight(nrLight* value) { return static_cast<nrMFRef*>(getField(LIGHT_FIELD))->remove(value); }

nrLight* nrEnvironment::getLight(int i) const {
  if (i < 0 || i >= getNumLights()) return nullptr;
  return static_cast<nrLight*>(light[static_cast<unsigned>(i)]);
}

void nrEnvironment::setFog(nrFog* value) { static_cast<nrSFRef*>(getField(FOG_FIELD))->set(value); }

nrFog* nrEnvironment::getFog() const { return static_cast<nrFog*>(getFieldValue(fog, FOG_FIELD)); }

void nrEnvironment::fieldChanged(short index) {
  if (index == FOG_FIELD && fog && !fog->isOfType(nrFog::getClassType())) {
    fprintf(stderr, "nrEnvironment: %s is not a Fog; no fog is kept\n", fog->getType()->getName());
    setFog(nullptr);
    return;
  }
  nrGroup::fieldChanged(index);
}

nrTravDirective nrEnvironment::drawVisit(nrDrawAction* action) {
  cleanPendingFields();
  nrTravDirective d = action->preVisit(this);
  if (d == CONTINUE_TRAV) {
    nrContext* context = action->getContext();
    if (context) {
      context->pushLights();
      context->pushFog(getFog());
    }
    for (unsigned i = 0; i < light.getCount(); ++i)
      if (light[i]) static_cast<nrLight*>(light[i])->draw(action);
    if (fog) getFog()->draw(action);
    d = visitChildren(action, &nrNode::drawVisit);
    if (context) {
      context->popFog();
      context->popLights();
    }
  }
  return nrTravCombine(d, action->postVisit(this));
}
