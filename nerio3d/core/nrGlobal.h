// Library-wide services: notification of conditions with a severity, data-file search.
#pragma once

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
};
