// Reading a scene file for a command-line program: the reader's own messages
// pass through, and every failure ends in one line on standard error that
// names the program and the file.
#pragma once

class nrGroup;

namespace SceneFile {

// The root group of the scene in fileName, found through the data-file
// search, referenced for the caller; null after the message when the file is
// missing, cannot be opened, or (with drawable set) holds nothing to draw.
// seconds is the time the reader took.
nrGroup* load(const char* program, const char* fileName, bool drawable, double& seconds);

}  // namespace SceneFile
