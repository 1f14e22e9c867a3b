#include "tests/trust/FaultSweep.h"

#include <gtest/gtest.h>
#include <iostream>

const char* nameOf(FaultDuration duration) { return duration == FaultDuration::once ? "once" : "for ever"; }

SweepReport::~SweepReport() {
    std::cout << mTitle << ": " << mOperations << " operations, " << mFaults << " faults, " << mSurvivors
              << " survivors\n";
    testing::Test::RecordProperty("operations", std::to_string(mOperations));
    testing::Test::RecordProperty("faults", std::to_string(mFaults));
    testing::Test::RecordProperty("survivors", std::to_string(mSurvivors));
}
