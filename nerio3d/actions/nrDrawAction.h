// The rendering traversal: culls like its base and draws what is visible.
#pragma once

#include "nerio3d/actions/nrVFCullAction.h"
#include "nerio3d/math/nrVec3f.h"

class nrContext;

class nrDrawAction : public nrVFCullAction {
  NR_DECLARE_ACTION_TYPE(nrDrawAction)

  nrDrawAction() : nrDrawAction(getClassType()) {}
  explicit nrDrawAction(nrType* type);

  // Captures the current context, then reset(), begin(root), the root's
  // drawVisit (nothing for a null root), end(root); the visit's result, 0 for
  // a null root.
  nrTravDirective apply(nrNode* root) override;

  nrContext* getContext() const { return context; }
  void setContext(nrContext* ctx) { context = ctx; }

  // The viewing direction (orthographic camera) or the eye position
  // (perspective camera) in the coordinates of the node being drawn.
  const nrVec3f& getViewVector() const { return viewVector; }
  void setViewVector(const nrVec3f& v) { viewVector = v; }
  int getOrthographic() const { return orthographic; }

  // Per-primitive back-face culling of geometry sets on the processor.
  void setBPCullEnable(unsigned char on) { bpCullEnable = on; }
  unsigned char getBPCullEnable() const { return bpCullEnable; }

 protected:
  nrContext* context;
  nrVec3f viewVector;
  int orthographic;
  int reserved;
  unsigned char bpCullEnable;
};
