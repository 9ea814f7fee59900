// One frame of a scene rendered offscreen (EGL, no display needed) at a
// chosen scene time and written as a PNG.
#pragma once

class SceneView;

namespace Snapshot {

// Advances the time sensors to time on the application's clock, draws view
// into a width x height offscreen drawable and writes it to path. False after
// a message on standard error; frameSeconds is the time the frame took.
bool render(SceneView& view, const char* path, int width, int height, double time, double& frameSeconds);

}  // namespace Snapshot
