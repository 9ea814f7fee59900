// The rendering traversal: culls like its base and draws what is visible into
// the graphics context.
#pragma once

#include "nerio3d/actions/nrVFCullAction.h"
#include "nerio3d/math/nrVec3f.h"

class nrContext;
class nrPtrArray;

class nrDrawAction : public nrVFCullAction {
  NR_DECLARE_ACTION_TYPE(nrDrawAction)

  nrDrawAction() : nrDrawAction(getClassType()) {}
  explicit nrDrawAction(nrType* type);
  ~nrDrawAction() override;

  // Captures the current context, then reset(), notes whether the camera is
  // orthographic, brings the view vector up to date, switches normalisation
  // off and pushes the context state, then begin(root), the root's drawVisit,
  // end(root), and pops the context state; returns the visit's result. A null
  // root draws nothing and returns 0; it needs no camera. Any other root
  // without a camera gives one line on standard error and 0, drawing nothing.
  // Without a current context the traversal runs without touching one.
  // begin and end keep the base's empty hooks, free for subclasses. The
  // camera's matrices are not loaded here: call camera->draw(action) first.
  nrTravDirective apply(nrNode* root) override;

  nrContext* getContext() const { return context; }
  void setContext(nrContext* ctx) { context = ctx; }
  // Clears context from every draw action that holds it; a context calls it
  // as it is destroyed, so that drawing outside apply finds no stale context.
  static void forgetContext(nrContext* context);

  // The viewing direction (orthographic camera) or the eye position
  // (perspective camera) in the coordinates of the node being drawn.
  const nrVec3f& getViewVector() const { return viewVector; }
  void getViewVector(nrVec3f& v) const { v = viewVector; }
  void setViewVector(const nrVec3f& v) { viewVector = v; }
  // Recomputes the view vector from the top matrix: the eye's z axis (row 2 of
  // its inverse) under an orthographic camera, the eye position (row 3) else.
  void updateViewVector();
  // Non-zero when the camera is an nrOrthoCamera.
  int getOrthographic() const { return orthographic; }

  // Per-primitive back-face culling of geometry sets on the processor.
  void setBPCullEnable(unsigned char on) { bpCullEnable = on; }
  unsigned char getBPCullEnable() const { return bpCullEnable; }

 protected:
  nrContext* context;
  nrVec3f viewVector;
  int orthographic;
  unsigned char bpCullEnable;

 private:
  static nrPtrArray* actions;
};
