#include "tests/applet/WritableParameters.h"
#include "tests/support/AppletOnBoard.h"

#include <algorithm>

// Every standard parameter that takes a number, at every edge of what it takes.

namespace {

/// An applet with a parameter's preparation done.
class PreparedApplet {
  public:
    PreparedApplet(const std::vector<WritableParameter>& all, const WritableParameter& parameter, int port)
        : mPort(port) {
        for (const auto& [name, value] : parameter.preparation) {
            const auto found = std::find_if(all.begin(), all.end(), [&wanted = name](const auto& candidate) {
                return candidate.name == wanted;
            });
            EXPECT_EQ(set(*found, value), 0) << name;
        }
    }

    int set(const WritableParameter& parameter, double value) {
        return parameter.isReal ? applet.set(id(parameter), value, mPort)
                                : applet.set(id(parameter), static_cast<unsigned>(value), mPort);
    }
    double get(const WritableParameter& parameter, int port) {
        return parameter.isReal ? applet.getReal(id(parameter), port) : applet.get(id(parameter), port);
    }
    double get(const WritableParameter& parameter) { return get(parameter, mPort); }

    AppletOnBoard applet;

  private:
    int id(const WritableParameter& parameter) {
        return Fg_getParameterIdByName(applet.handle(), parameter.name.c_str());
    }

    int mPort;
};

} // namespace

class WritableParameters : public OnBothPorts {
  protected:
    std::vector<WritableParameter> all = writableParameters(port());
};
FOR_BOTH_PORTS(WritableParameters);

TEST_P(WritableParameters, StartAtTheirDefaults) {
    PreparedApplet fresh(all, WritableParameter{}, port());
    for (const WritableParameter& parameter : all) {
        EXPECT_DOUBLE_EQ(fresh.get(parameter), parameter.initial) << parameter.name;
    }
}

TEST_P(WritableParameters, TakeEveryValueOfTheirRange) {
    for (const WritableParameter& parameter : all) {
        for (const double value : parameter.accepted) {
            SCOPED_TRACE(parameter.name + " <- " + testing::PrintToString(value));
            PreparedApplet prepared(all, parameter, port());
            const double othersValue = prepared.get(parameter, otherPort());
            EXPECT_EQ(prepared.set(parameter, value), 0);
            EXPECT_EQ(prepared.applet.lastError(), 0);
            EXPECT_NEAR(prepared.get(parameter), value, parameter.tolerance);
            if (!parameter.isShared) {
                EXPECT_EQ(prepared.get(parameter, otherPort()), othersValue);
            }
        }
    }
}

TEST_P(WritableParameters, RefuseEveryOther) {
    for (const WritableParameter& parameter : all) {
        PreparedApplet prepared(all, parameter, port());
        const double before = prepared.get(parameter);
        const double othersValue = prepared.get(parameter, otherPort());
        for (const auto& [value, code] : parameter.refused) {
            SCOPED_TRACE(parameter.name + " <- " + testing::PrintToString(value));
            AppletOnBoard::forgetCalls();
            EXPECT_EQ(prepared.set(parameter, value), code);
            EXPECT_EQ(prepared.applet.lastError(), code);
            EXPECT_TRUE(AppletOnBoard::writes().empty());
            EXPECT_EQ(prepared.get(parameter), before);
            EXPECT_EQ(prepared.get(parameter, otherPort()), othersValue);
        }
    }
}

TEST_P(WritableParameters, AreAllButTextsAndTheTable) {
    unsigned writable = 0;
    for (int index = 0; index < Fg_getNrOfParameter(applet.handle()); ++index) {
        const std::string name = Fg_getParameterName(applet.handle(), index);
        const bool isListed = std::any_of(all.begin(), all.end(),
                                          [&](const auto& parameter) { return parameter.name == name; });
        if (isListed) {
            ++writable;
        } else if (name != "FG_LUT_VALUE" && name != "FG_LUT_CUSTOM_FILE" && name != "FG_LUT_SAVE_FILE") {
            EXPECT_EQ(applet.set(Fg_getParameterIdByName(applet.handle(), name.c_str()), 0U, port()), -12)
                << name;
        }
    }
    EXPECT_EQ(writable, all.size());
    EXPECT_EQ(writable, 58U);
}

TEST(NamedCaches, HoldWhatWasSetOnTheirPort) {
    AppletOnBoard applet;
    const FgQxWrapperImpl& wrapper = applet.wrapper();
    for (const int port : {0, 1}) {
        const auto value = static_cast<unsigned>(port);
        EXPECT_EQ(applet.set(FG_WIDTH, 512 + 16 * value, port), 0);
        EXPECT_EQ(applet.set(FG_PROCESSING_GAIN, 2.0 + port, port), 0);
        EXPECT_EQ(applet.set(FG_LUT_VALUE, FieldParameterInt_s{100 + value, 7}, port), 0);
    }
    EXPECT_EQ(wrapper.cache_FG_WIDTH_P0, 512U);
    EXPECT_EQ(wrapper.cache_FG_WIDTH_P1, 528U);
    EXPECT_EQ(wrapper.cache_FG_PROCESSING_GAIN_P0, 2.0);
    EXPECT_EQ(wrapper.cache_FG_PROCESSING_GAIN_P1, 3.0);
    EXPECT_EQ(wrapper.cache_FG_LUT_VALUE_P0[7], 100U);
    EXPECT_EQ(wrapper.cache_FG_LUT_VALUE_P1[7], 101U);
}
