#include "nerio3d/core/nrGlobal.h"

#include <cstdio>

const char* const nrGlobal::severityNames[] = {"ALWAYS", "FATAL", "WARN", "NOTICE",
                                               "INFO",   "DEBUG", "FP_DEBUG"};

const char* const nrGlobal::typeNames[] = {"USAGE",       "RESOURCE",   "SYSERR",     "ASSERT",
                                           "PRINT",       "INTERNAL",   "FP_OVERFLOW", "FP_DIVZERO",
                                           "FP_INVALID",  "FP_UNDERFLOW", "MORE"};

void nrGlobal::notify(NotifySeverityEnum severity, NotifyTypeEnum type, const char* message) {
  fprintf(stderr, "(%s, %s): %s\n", severityNames[severity], typeNames[type], message);
}
