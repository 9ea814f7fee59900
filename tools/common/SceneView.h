// What the viewer draws: a scene seen through a perspective camera that an
// examiner places, under a headlight that follows the camera, and optionally
// as wireframe through the context's override appearance.
#pragma once

#include "Examiner.h"

class nrAppearance;
class nrContext;
class nrDirectionalLight;
class nrDrawAction;
class nrGroup;
class nrPerspCamera;

class SceneView {
 public:
  // References scene. The headlight starts on when the scene has no light
  // of its own; the first draw frames the scene for its viewport.
  explicit SceneView(nrGroup* scene);
  ~SceneView();
  SceneView(const SceneView&) = delete;
  SceneView& operator=(const SceneView&) = delete;

  // Clears the current context's viewport of width x height pixels and draws
  // the scene into it.
  void draw(nrContext* context, int width, int height);

  void setHeadlight(bool on);
  bool getHeadlight() const;
  void setWireframe(bool on) { wireframe = on; }
  bool getWireframe() const { return wireframe; }

  Examiner& getExaminer() { return examiner; }
  // The camera as of the last draw (pointer sensors pick through it).
  nrPerspCamera* getCamera() const { return camera; }
  // The scene under the headlight: what is drawn and picked.
  nrGroup* getRoot() const { return root; }

 private:
  Examiner examiner;
  nrBoxBound box;
  bool framed = false;
  nrGroup* root;
  nrDirectionalLight* headlight;
  nrPerspCamera* camera;
  nrDrawAction* action;
  nrAppearance* lines;
  bool wireframe = false;
};
