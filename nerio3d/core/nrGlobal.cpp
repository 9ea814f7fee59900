#include "nerio3d/core/nrGlobal.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>

#include "nerio3d/arrays/nrTypedArray.h"
#include "nerio3d/core/nrString.h"

const char* const nrGlobal::severityNames[] = {"ALWAYS", "FATAL", "WARN", "NOTICE",
                                               "INFO",   "DEBUG", "FP_DEBUG"};

const char* const nrGlobal::typeNames[] = {"USAGE",       "RESOURCE",   "SYSERR",     "ASSERT",
                                           "PRINT",       "INTERNAL",   "FP_OVERFLOW", "FP_DIVZERO",
                                           "FP_INVALID",  "FP_UNDERFLOW", "MORE"};

// A severity or type outside its enumeration prints as "?", a null message as "".
void nrGlobal::notify(NotifySeverityEnum severity, NotifyTypeEnum type, const char* message) {
  const char* severityName = severity >= ALWAYS && severity <= FP_DEBUG ? severityNames[severity] : "?";
  const char* typeName = type >= USAGE && type <= MORE ? typeNames[type] : "?";
  fprintf(stderr, "(%s, %s): %s\n", severityName, typeName, message ? message : "");
}

nrPtrArray* nrGlobal::filePath = nullptr;

namespace {
const char* const openModes[] = {"r", "w", "r", "r"};

nrPtrArray* filePathList(nrPtrArray*& list) {
  if (!list) list = new nrPtrArray(8);
  return list;
}

// Sets result to directory + '/' (unless the directory ends in one) + name
// and reports whether that file opens.
bool tryDirectory(const std::string& directory, const char* name, nrString& result, const char* mode) {
  std::string path = directory;
  if (path.back() != '/') path += '/';
  path += name;
  result = path.c_str();
  FILE* file = fopen(path.c_str(), mode);
  if (!file) return false;
  fclose(file);
  return true;
}
}  // namespace

void nrGlobal::setFilePath(const char* newPath) {
  // The path may be the text getFilePath() returned, which goes with the old list.
  const std::string kept = newPath ? newPath : "";
  nrPtrArray* list = filePathList(filePath);
  for (unsigned i = 0; i < list->getCount(); ++i) delete static_cast<nrString*>((*list)[i]);
  list->setCount(0);
  if (kept.empty()) return;

  const char* path = kept.c_str();
  list->append(new nrString(path));
  const char* piece = path;
  while (*piece) {
    const char* end = strchr(piece, ':');
    if (!end) end = piece + strlen(piece);
    if (end > piece) list->append(new nrString(std::string(piece, end).c_str()));
    piece = *end ? end + 1 : end;
  }
}

const char* nrGlobal::getFilePath() {
  if (!filePath || filePath->getCount() == 0) return nullptr;
  return static_cast<nrString*>((*filePath)[0])->getString();
}

int nrGlobal::findFilePath(const char* name, nrString& result, FileModeEnum mode) {
  if (!name || !*name) return 0;
  const char* openMode = openModes[mode];

  result = name;
  if (FILE* file = fopen(name, openMode)) {
    fclose(file);
    return 1;
  }

  if (const char* environment = getenv("NR_DATAFILE_PATH")) {
    const std::string directories = environment;
    size_t start = 0;
    while (start < directories.size()) {
      size_t end = directories.find(':', start);
      if (end == std::string::npos) end = directories.size();
      if (end > start && tryDirectory(directories.substr(start, end - start), name, result, openMode)) return 1;
      start = end + 1;
    }
  }

  nrPtrArray* list = filePathList(filePath);
  for (unsigned i = 1; i < list->getCount(); ++i)
    if (tryDirectory(static_cast<nrString*>((*list)[i])->getString(), name, result, openMode)) return 1;
  return 0;
}

int nrGlobal::findFile(const char* givenName, nrString& result, FileModeEnum mode) {
  // The name may be result's own text, which emptying result frees.
  const std::string kept = givenName ? givenName : "";
  result.makeEmpty();
  filePathList(filePath);
  if (kept.empty() || mode < READ_FMODE || mode > READ_BINARY_FMODE) return 0;
  const char* name = kept.c_str();
  if (findFilePath(name, result, mode)) return 1;
  const char* base = strrchr(name, '/');
  return base ? findFilePath(base, result, mode) : 0;
}
