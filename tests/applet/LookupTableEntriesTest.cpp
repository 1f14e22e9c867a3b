#include "tests/applet/LookupTableOnBoard.h"

// Single entries of the table, and what is fixed about it.

using LookupTableEntries = LookupTableOnBoard;
FOR_BOTH_PORTS(LookupTableEntries);

TEST_P(LookupTableEntries, AnEntryIsWrittenAlone) {
    for (const FieldParameterInt_s entry :
         {FieldParameterInt_s{4095, 0}, FieldParameterInt_s{0, 4095}, FieldParameterInt_s{17, 1000}}) {
        AppletOnBoard::forgetCalls();
        ASSERT_EQ(applet.set(FG_LUT_VALUE, entry, port()), 0);
        const auto calls = simulator::hostCalls().calls(simulator::CallKind::write);
        ASSERT_EQ(calls.size(), 1U);
        EXPECT_EQ(calls[0].name, content(port()));
        EXPECT_EQ(calls[0].type, 4098);
        EXPECT_EQ(calls[0].dmaIndex, static_cast<unsigned>(port()));
        EXPECT_EQ(calls[0].values, (std::vector<std::uint32_t>{entry.value, entry.index}));
    }
    Table expected = straight();
    expected[0] = 4095;
    expected[4095] = 0;
    expected[1000] = 17;
    expectTable(expected);
}

TEST_P(LookupTableEntries, WhatIsNoEntryIsRefused) {
    AppletOnBoard::forgetCalls();
    for (const FieldParameterInt_s entry :
         {FieldParameterInt_s{0, 4096}, FieldParameterInt_s{4096, 0}, FieldParameterInt_s{0, 0xFFFFFFFF},
          FieldParameterInt_s{0xFFFFFFFF, 4095}}) {
        EXPECT_EQ(applet.set(FG_LUT_VALUE, entry, port()), -6000);
        EXPECT_EQ(applet.lastError(), -6000);
    }
    EXPECT_TRUE(AppletOnBoard::writes().empty());
    expectTable(straight());
    FgQxWrapperImpl& wrapper = applet.wrapper();
    EXPECT_EQ(thrownBy([&] { wrapper.set_sdk_param_FG_LUT_VALUE_P0(nullptr, true); }), -6000);
    EXPECT_EQ(thrownBy([&] { wrapper.set_sdk_param_FG_LUT_VALUE_P1(nullptr, false); }), 0);
}

TEST_P(LookupTableEntries, ReadingBeyondTheTableIsRefused) {
    for (const unsigned index : {4096U, 0xFFFFFFFFU}) {
        FieldParameterInt_s entry{77, index};
        EXPECT_EQ(
            Fg_getParameterWithType(applet.handle(), FG_LUT_VALUE, &entry, static_cast<unsigned>(port()), 0),
            -2070);
        EXPECT_EQ(entry.value, 77U);
        EXPECT_EQ(entry.index, index);
    }
    EXPECT_EQ(thrownBy([&] { applet.wrapper().get_sdk_param_FG_LUT_VALUE_P0(nullptr); }), -2070);
}

TEST_P(LookupTableEntries, AFailedWritePutsTheEntryBack) {
    AppletOnBoard::failWrite(1, runtimeFailure);
    EXPECT_EQ(applet.set(FG_LUT_VALUE, FieldParameterInt_s{9, 100}, port()), runtimeFailure);
    expectTable(straight());
    EXPECT_EQ(applet.set(FG_LUT_VALUE, FieldParameterInt_s{9, 100}, port()), 0);
    EXPECT_EQ(onBoard(port())[100], 9U);
}

TEST_P(LookupTableEntries, TheNextComputationOverwritesThem) {
    ASSERT_EQ(applet.set(FG_LUT_VALUE, FieldParameterInt_s{9, 100}, port()), 0);
    ASSERT_EQ(applet.set(FG_LUT_TYPE, 3U, port()), 0);
    expectTable(straight());
}

TEST_P(LookupTableEntries, ContentWriterPassesItsArgumentsOn) {
    FgQxWrapperImpl& wrapper = applet.wrapper();
    const auto write =
        port() == 0 ? &FgQxWrapperImpl::set_qx_param_Device1_Process0_LookupTable_LookupTable_LUTcontent
                    : &FgQxWrapperImpl::set_qx_param_Device1_Process1_LookupTable_LookupTable_LUTcontent;
    const FieldParameterInt_s entry{5, 6};
    AppletOnBoard::forgetCalls();
    EXPECT_EQ(thrownBy([&] { (wrapper.*write)(nullptr, 1, 4096, true); }), -2070);
    EXPECT_EQ(thrownBy([&] { (wrapper.*write)(nullptr, 1, 4096, false); }), 0);
    EXPECT_TRUE(AppletOnBoard::writes().empty());
    (wrapper.*write)(&entry, 1, 4098, true);
    const std::vector<RecordedWrite> expected{{content(port()), 5, 1, 4098}};
    EXPECT_EQ(AppletOnBoard::writes(), expected);
    AppletOnBoard::failWrite(1, runtimeFailure);
    EXPECT_EQ(thrownBy([&] { (wrapper.*write)(&entry, 1, 4098, true); }), runtimeFailure);
    AppletOnBoard::failWrite(1, runtimeFailure);
    EXPECT_EQ(thrownBy([&] { (wrapper.*write)(&entry, 1, 4098, false); }), 0);
}

TEST_P(LookupTableEntries, WordLengthsAndKindAreFixed) {
    EXPECT_EQ(applet.get(FG_LUT_IN_BITS, port()), 12U);
    EXPECT_EQ(applet.get(FG_LUT_OUT_BITS, port()), 12U);
    EXPECT_EQ(applet.get(FG_LUT_IMPLEMENTATION_TYPE, port()), 0U);
    for (const int id : {FG_LUT_IN_BITS, FG_LUT_OUT_BITS, FG_LUT_IMPLEMENTATION_TYPE}) {
        EXPECT_EQ(applet.set(id, 12U, port()), -12);
    }
}
