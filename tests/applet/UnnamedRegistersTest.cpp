// A design runtime that counts more registers than it has names for.

#include "grabber_basis/parameterInfo.h"
#include "platform/DesignRuntime.h"
#include "tests/support/Creation.h"
#include "tests/support/ScopedEnvironment.h"

#include <map>
#include <string>

namespace {

int numberWithoutName = 0;

/// The "DRA_" names by their ids.
std::map<int, std::string> registerNames(Fg_Struct* handle) {
    std::map<int, std::string> names;
    for (int index = 93; index < Fg_getNrOfParameter(handle); ++index) {
        const char* name = Fg_getParameterName(handle, index);
        names.emplace(Fg_getParameterIdByName(handle, name), name);
    }
    return names;
}

class UnnamedRegisters : public kavo::test::OnFreshBoard {
  protected:
    ~UnnamedRegisters() override { numberWithoutName = 0; }

    const kavo::test::ScopedEnvironment on{"KAVO_ENABLE_DRA", "1"};
};

} // namespace

// The linker sees the wrapped name in shared libraries too, which could not refer to a hidden function.
extern "C" {
__attribute__((visibility("default"))) const char* __real_QelGetRegisterName(fpga_design* design, int index);
__attribute__((visibility("default"))) const char* __wrap_QelGetRegisterName(fpga_design* design, int index);
const char* __wrap_QelGetRegisterName(fpga_design* design, int index) {
    return index == numberWithoutName ? nullptr : __real_QelGetRegisterName(design, index);
}
}

TEST_F(UnnamedRegisters, AreNoParametersAndTheOthersKeepTheirIds) {
    std::map<int, std::string> names;
    {
        kavo::test::Creation whole(1);
        names = registerNames(whole.handle());
        ASSERT_GT(names.size(), 5U);
    }
    numberWithoutName = 3;
    kavo::test::Creation creation(1);
    ASSERT_EQ(names.erase(1000003), 1U);
    EXPECT_EQ(registerNames(creation.handle()), names);
    const RegisterInfo* group = Fg_getParameterInfo(creation.handle(), 0);
    ASSERT_STREQ(group->name, "Direct Register Access");
    EXPECT_EQ(group->u.gReg.nrOfElements, static_cast<int>(names.size()));
}
