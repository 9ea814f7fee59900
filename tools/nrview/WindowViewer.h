// The interactive side of nrview: a window on a scene with examiner
// navigation, keys, animation and pointer sensors.
#pragma once

class SceneView;

namespace WindowViewer {

// Opens a window on view, titled after fileName and the frame rate, and runs
// until the user quits or closes it. Returns the exit status: 0, or 1 after a
// message when no window can be opened.
//
// Left drag turns the scene, middle drag (or shift + left) pans, right drag
// and the wheel zoom. Keys: r resets the view, w toggles wireframe, h the
// headlight, q and Escape quit. A left press over a pointer sensor's geometry
// drives the sensor instead of the view. Frames run continuously while a
// time sensor is running, and only on input otherwise.
int run(SceneView& view, const char* fileName);

}  // namespace WindowViewer
