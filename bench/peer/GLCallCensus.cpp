#include "GLCallCensus.h"

#include <algorithm>
#include <cstring>
#include <set>

namespace {

// The arguments of "glName(a, {b, c}, d)" split at the commas outside braces.
std::vector<std::string> arguments(const std::string& call) {
  std::vector<std::string> args;
  size_t open = call.find('('), close = call.rfind(')');
  if (open == std::string::npos || close == std::string::npos || close <= open + 1) return args;
  std::string current;
  int depth = 0;
  for (size_t i = open + 1; i < close; ++i) {
    char c = call[i];
    if (c == '{') ++depth;
    if (c == '}') --depth;
    if (c == ',' && depth == 0) {
      args.push_back(current);
      current.clear();
      if (i + 1 < close && call[i + 1] == ' ') ++i;
    } else {
      current += c;
    }
  }
  args.push_back(current);
  return args;
}

bool startsWith(const std::string& s, const char* prefix) { return s.compare(0, strlen(prefix), prefix) == 0; }

// Functions that set one piece of state named by their function alone.
const std::set<std::string> wholeState = {
    "glShadeModel", "glCullFace",   "glFrontFace",       "glDepthFunc", "glDepthMask",   "glAlphaFunc",
    "glBlendFunc",  "glLineWidth",  "glPointSize",       "glColorMask", "glLineStipple", "glPolygonStipple",
    "glClearColor", "glClearDepth", "glViewport",        "glScissor",   "glColorMaterial", "glBlendColor",
    "glLogicOp",    "glStencilFunc", "glStencilOp",      "glStencilMask", "glClearStencil", "glDrawBuffer",
    "glReadBuffer", "glActiveTexture"};

// Functions whose first argument (or first two) names the piece of state they set.
const std::map<std::string, int> keyedState = {
    {"glPolygonMode", 1}, {"glFogf", 1},       {"glFogi", 1},        {"glFogfv", 1},      {"glHint", 1},
    {"glPixelStorei", 1}, {"glLightModelf", 1}, {"glLightModeli", 1}, {"glLightModelfv", 1}, {"glBindTexture", 1},
    {"glTexEnvf", 2},     {"glTexEnvi", 2},    {"glTexEnvfv", 2},    {"glTexGeni", 2},    {"glTexGenf", 2},
    {"glTexGenfv", 2},    {"glTexParameteri", 2}, {"glTexParameterf", 2}, {"glTexParameterfv", 2}, {"glClipPlane", 1}};

}  // namespace

GLCallCensus::GLCallCensus(const std::vector<std::string>& calls) {
  for (const std::string& call : calls) classify(call);
}

bool GLCallCensus::set(const std::string& key, const std::string& value) {
  auto it = state.find(key);
  if (it != state.end() && it->second == value) return false;
  state[key] = value;
  return true;
}

void GLCallCensus::classify(const std::string& call) {
  ++calls;
  std::string name = call.substr(0, call.find('('));
  std::vector<std::string> args = arguments(call);
  auto joined = [&](size_t from) {
    std::string text;
    for (size_t i = from; i < args.size(); ++i) text += args[i] + ";";
    return text;
  };

  if (name == "glNewList") compiling = true;
  if (compiling || beginDepth > 0 || name == "glBegin") {
    if (name == "glBegin") ++beginDepth;
    if (name == "glEnd") --beginDepth;
    if (name == "glEndList") compiling = false;
    ++drawing;
    return;
  }
  if (name == "glDrawArrays" || name == "glDrawElements" || name == "glCallList" || name == "glCallLists" ||
      name == "glClear" || name == "glFinish" || name == "glFlush" || name == "glReadPixels") {
    ++drawing;
    return;
  }
  if (startsWith(name, "glGet") || startsWith(name, "glIs") || startsWith(name, "gluProject")) {
    ++queries;
    return;
  }

  bool changed = true;
  if (name == "glEnable" || name == "glDisable") {
    changed = set("enable " + joined(0), name);
  } else if (name == "glEnableClientState" || name == "glDisableClientState") {
    changed = set("client " + joined(0), name);
  } else if (startsWith(name, "glMaterial") && args.size() == 3) {
    const std::string value = joined(2);
    bool front = args[0] != "GL_BACK", back = args[0] != "GL_FRONT";
    bool changedFront = front && set("material GL_FRONT " + args[1], value);
    bool changedBack = back && set("material GL_BACK " + args[1], value);
    changed = changedFront || changedBack;
  } else if (startsWith(name, "glLight") && !startsWith(name, "glLightModel") && args.size() == 3) {
    // Positions and directions are taken through the modelview of the moment.
    if (args[1] != "GL_POSITION" && args[1] != "GL_SPOT_DIRECTION") changed = set("light " + args[0] + args[1], args[2]);
  } else if (startsWith(name, "glColor") || startsWith(name, "glNormal3") || startsWith(name, "glTexCoord")) {
    std::string family = startsWith(name, "glColor") ? "color" : startsWith(name, "glNormal") ? "normal" : "texcoord";
    changed = set("current " + family, call);
  } else if (name == "glMatrixMode") {
    matrixMode = joined(0);
    changed = set("matrix mode", matrixMode);
  } else if (name == "glLoadMatrixf" || name == "glLoadMatrixd" || name == "glLoadIdentity") {
    changed = set("matrix " + matrixMode, name == "glLoadIdentity" ? std::string("identity") : joined(0));
  } else if (name == "glMultMatrixf" || name == "glMultMatrixd" || name == "glTranslatef" || name == "glScalef" ||
             name == "glRotatef" || name == "glPopMatrix" || name == "glFrustum" || name == "glOrtho" ||
             startsWith(name, "gluPerspective") || startsWith(name, "gluLookAt") || startsWith(name, "gluOrtho")) {
    state.erase("matrix " + matrixMode);
  } else if (name == "glPopAttrib") {
    state.clear();
  } else if (wholeState.count(name)) {
    changed = set(name, joined(0));
  } else if (keyedState.count(name)) {
    size_t keyArgs = size_t(keyedState.at(name));
    std::string key = name.substr(0, name.find_last_not_of("fiv") + 1);
    for (size_t i = 0; i < keyArgs && i < args.size(); ++i) key += " " + args[i];
    changed = set(key, joined(keyArgs));
  }
  if (changed) {
    ++changes;
  } else {
    ++redundant;
    ++wasted[name];
  }
}

std::string GLCallCensus::redundantByFunction() const {
  std::vector<std::pair<long, std::string>> sorted;
  for (const auto& entry : wasted) sorted.emplace_back(entry.second, entry.first);
  std::sort(sorted.rbegin(), sorted.rend());
  std::string text;
  for (const auto& entry : sorted) text += (text.empty() ? "" : ", ") + entry.second + " " + std::to_string(entry.first);
  return text;
}
