#include "nerio3d/core/nrGlobal.h"

#include "nrCapture.h"

TEST(nrGlobalNotify, PrintsSeverityTypeAndMessageVerbatim) {
  EXPECT_EQ(nrtest::captureStderr([] { nrGlobal::notify(nrGlobal::FATAL, nrGlobal::RESOURCE, "x"); }),
            "(FATAL, RESOURCE): x\n");
  // Every severity is printed; the message is never used as a format.
  EXPECT_EQ(nrtest::captureStderr([] { nrGlobal::notify(nrGlobal::DEBUG, nrGlobal::PRINT, "%d %s"); }),
            "(DEBUG, PRINT): %d %s\n");
  EXPECT_EQ(nrtest::captureStderr([] { nrGlobal::notify(nrGlobal::FP_DEBUG, nrGlobal::MORE, "m\n"); }),
            "(FP_DEBUG, MORE): m\n\n");
}
