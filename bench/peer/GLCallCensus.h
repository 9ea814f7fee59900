// Sorts the OpenGL calls of one frame, as nrGLRecorder writes them, into
// drawing, real state changes and calls that change nothing.
//
// Drawing: everything from glBegin to its glEnd (the vertex data of
// immediate mode included), glDrawArrays, glDrawElements, glCallList(s),
// glClear and the calls compiled into a display list. A state-setting call
// is a real change unless it sets a piece of state to the value the same
// frame last set it to (an enable, a material or light parameter per face
// or light, the current colour or normal, a matrix loaded, a texture bound,
// a mode); the first call for a piece of state always counts as a change.
// Calls whose effect cannot be compared from their text (matrix products
// and stacks, array pointers, light positions, which the modelview
// transforms) count as changes too, and glPopAttrib forgets every value.
#pragma once

#include <map>
#include <string>
#include <vector>

class GLCallCensus {
 public:
  explicit GLCallCensus(const std::vector<std::string>& calls);

  long calls = 0;      // every call
  long drawing = 0;    // drawing calls, as above
  long changes = 0;    // state-setting calls that changed something
  long queries = 0;    // glGet*, glIsEnabled and the like
  long redundant = 0;  // state-setting calls that changed nothing

  // Calls per real change or drawing call: 1 when nothing is sent in vain.
  double ratio() const { return double(calls) / double(changes + drawing); }
  // The functions of the redundant calls, most frequent first, as "glMaterialfv 30192, ...".
  std::string redundantByFunction() const;

 private:
  void classify(const std::string& call);
  // Records VALUE as the state under KEY; true when it differs from the last one.
  bool set(const std::string& key, const std::string& value);

  std::map<std::string, std::string> state;
  std::map<std::string, long> wasted;
  std::string matrixMode = "GL_MODELVIEW";
  int beginDepth = 0;
  bool compiling = false;
};
