// Library-wide services: notification of conditions with a severity, data-file search.
#pragma once

class nrPtrArray;
class nrString;

class nrGlobal {
 public:
  enum NotifySeverityEnum { ALWAYS, FATAL, WARN, NOTICE, INFO, DEBUG, FP_DEBUG };
  enum NotifyTypeEnum {
    USAGE,
    RESOURCE,
    SYSERR,
    ASSERT,
    PRINT,
    INTERNAL,
    FP_OVERFLOW,
    FP_DIVZERO,
    FP_INVALID,
    FP_UNDERFLOW,
    MORE
  };

  // Names of the enumeration values, spelled as their identifiers.
  static const char* const severityNames[];
  static const char* const typeNames[];

  // Prints "(severity, type): message" and a newline to standard error; never
  // changes control flow, whatever the severity.
  static void notify(NotifySeverityEnum severity, NotifyTypeEnum type, const char* message);

  // How findFile probes a candidate: by opening it for reading, or for
  // writing (which creates the file). Text and binary reads open alike here.
  enum FileModeEnum { READ_FMODE, WRITE_FMODE, READ_TEXT_FMODE, READ_BINARY_FMODE };

  // Sets the application's search path: directories separated by ':'. Null
  // or "" clears it.
  static void setFilePath(const char* path);
  // The string last given to setFilePath, or null when there is none.
  static const char* getFilePath();
  // Looks for name as given, then in each directory of the environment
  // variable NR_DATAFILE_PATH, then in each directory of the search path; if
  // that fails, once more with the name's directory part dropped. Returns 1
  // and the path found in result, or 0 with the last path tried in result.
  static int findFile(const char* name, nrString& result, FileModeEnum mode);
  static int findFile(const char* name, nrString& result, int mode) {
    return findFile(name, result, static_cast<FileModeEnum>(mode));
  }

 private:
  static int findFilePath(const char* name, nrString& result, FileModeEnum mode);

  // Entry 0 is the whole string last set, the others its directories.
  static nrPtrArray* filePath;
};
