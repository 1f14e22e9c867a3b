#include "applet/Enumerations.h"

#include <iterator>

namespace enumerations {

namespace {

constexpr EnumerationEntry pixelFormats[] = {
    {"Mono 8bit", pixelFormatMono8, "MONO8"},
    {"Mono 8bit signed", 1, "MONO8_SIGNED"},
    {"Mono 10bit", 2, "MONO10"},
    {"Mono 12bit", 4, "MONO12"},
    {"Mono 16bit", 6, "MONO16"},
};
constexpr EnumerationEntry yesNo[] = {{"Yes", answerYes, "FG_YES"}, {"No", 0, "FG_NO"}};
constexpr EnumerationEntry formats[] = {
    {"Gray 8bit", formatGray8, "FG_GRAY"},
    {"Gray 16bit", formatGray16, "FG_GRAY16"},
};
constexpr EnumerationEntry alignments[] = {
    {"Left Aligned", 1, "FG_LEFT_ALIGNED"},
    {"Right Aligned", 0, "FG_RIGHT_ALIGNED"},
};
constexpr EnumerationEntry lookupTableTypes[] = {
    {"Processor", lookupTableProcessing, "LUT_TYPE_PROCESSING"},
    {"User file", lookupTableCustom, "LUT_TYPE_CUSTOM"},
};
constexpr EnumerationEntry lookupTableImplementations[] = {
    {"Full LUT", 0, "LUT_IMPLEMENTATION_FULL_LUT"},
    {"KneeLUT", 1, "LUT_IMPLEMENTATION_KNEELUT"},
};
constexpr EnumerationEntry onOff[] = {{"On", switchedOn, "FG_ON"}, {"Off", 0, "FG_OFF"}};
constexpr EnumerationEntry apply[] = {{"Apply", applyNow, "FG_APPLY"}};
constexpr EnumerationEntry triggerInSources[] = {
    {"Trigger Source 0", 0, "TRGINSRC_0"}, {"Trigger Source 1", 1, "TRGINSRC_1"},
    {"Trigger Source 2", 2, "TRGINSRC_2"}, {"Trigger Source 3", 3, "TRGINSRC_3"},
    {"Trigger Source 4", 4, "TRGINSRC_4"}, {"Trigger Source 5", 5, "TRGINSRC_5"},
    {"Trigger Source 6", 6, "TRGINSRC_6"}, {"Trigger Source 7", 7, "TRGINSRC_7"},
};
constexpr EnumerationEntry polarities[] = {{"Low Active", 1, "LOW_ACTIVE"},
                                           {"High Active", 0, "HIGH_ACTIVE"}};
constexpr EnumerationEntry busyFlags[] = {
    {"Busy Flag is set", busy, "IS_BUSY"},
    {"Busy Flag is not set", notBusy, "IS_NOT_BUSY"},
};
constexpr EnumerationEntry outputSelections[] = {
    {"Pulse Generator 0", 0, "PULSEGEN0"},
    {"Pulse Generator 1", 1, "PULSEGEN1"},
    {"Pulse Generator 2", 2, "PULSEGEN2"},
    {"Pulse Generator 3", 3, "PULSEGEN3"},
    {"GND", 4, "GND"},
    {"VCC", 5, "VCC"},
    {"Not Pulse Generator 0", 6, "NOT_PULSEGEN0"},
    {"Not Pulse Generator 1", 7, "NOT_PULSEGEN1"},
    {"Not Pulse Generator 2", 8, "NOT_PULSEGEN2"},
    {"Not Pulse Generator 3", 9, "NOT_PULSEGEN3"},
    {"Input Bypass", 10, "INPUT_BYPASS"},
    {"Not Input Bypass", 11, "NOT_INPUT_BYPASS"},
};
constexpr EnumerationEntry pulseGenerators[] = {
    {"Pulse Generator 0", 0, "PULSEGEN0"},
    {"Pulse Generator 1", 1, "PULSEGEN1"},
    {"Pulse Generator 2", 2, "PULSEGEN2"},
    {"Pulse Generator 3", 3, "PULSEGEN3"},
};

constexpr EnumerationEntry generatorMode = {"Generator", modeGenerator, "ATM_GENERATOR"};
constexpr EnumerationEntry externalMode = {"External", modeExternal, "ATM_EXTERNAL"};
constexpr EnumerationEntry softwareMode = {"Software", modeSoftware, "ATM_SOFTWARE"};
constexpr EnumerationEntry triggerModes[] = {generatorMode, externalMode, softwareMode};
constexpr EnumerationEntry triggerModesOfFollower[] = {
    generatorMode, externalMode, softwareMode, {"Synchronized", modeSynchronized, "ATM_SYNCHRONIZED"}};

constexpr EnumerationEntry triggerStates[] = {
    {"Active", stateActive, "TS_ACTIVE"},
    {"Async Stop", stateAsyncStop, "TS_ASYNC_STOP"},
    {"Sync Stop", stateSyncStop, "TS_SYNC_STOP"},
};

} // namespace

const Enumeration PixelFormatGrayAreaGigE_LAG(pixelFormats);
const Enumeration YesNo(yesNo);
const Enumeration FormatGray(formats);
const Enumeration AlignmentModesBoth(alignments);
const Enumeration AcqLutTypes(lookupTableTypes);
const Enumeration LookupTableImplementations(lookupTableImplementations);
const Enumeration OnOff(onOff);
const Enumeration Apply(apply);
const Enumeration TriggerInSource(triggerInSources);
const Enumeration TriggerPolarity(polarities);
const Enumeration BusyFlag(busyFlags);
const Enumeration TriggerOutSelection_Gen4(outputSelections);
const Enumeration TriggerOutStatsSources_Gen4(pulseGenerators);
const Enumeration AreaTriggerModes(triggerModes);
const Enumeration AreaTriggerModesPlusSync(triggerModesOfFollower);
const Enumeration TriggerStates(triggerStates);

const Enumeration* const all[] = {
    &PixelFormatGrayAreaGigE_LAG,
    &YesNo,
    &FormatGray,
    &AlignmentModesBoth,
    &AcqLutTypes,
    &LookupTableImplementations,
    &OnOff,
    &Apply,
    &TriggerInSource,
    &TriggerPolarity,
    &BusyFlag,
    &AreaTriggerModes,
    &AreaTriggerModesPlusSync,
    &TriggerStates,
    &TriggerOutSelection_Gen4,
    &TriggerOutStatsSources_Gen4,
};
const std::size_t allCount = std::size(all);

} // namespace enumerations
