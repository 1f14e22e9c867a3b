#include "applet/PersistedKeys.h"

// clang-format off
#define ACCESS(name, Value, initial) \
    KeyAccess<Value>{&StandardParameterCaches::cache_##name, &FgQxWrapperImpl::write_##name, \
                     &FgQxWrapperImpl::read_##name, initial}
#define KEY(name, Value, pass) {name, #name, LoadPass::pass, ACCESS(name, Value, defaults::name())}
#define KEY_WITHOUT_DEFAULT(name, Value, pass) {name, #name, LoadPass::pass, ACCESS(name, Value, std::nullopt)}
#define GENERATOR_KEYS(g) \
    KEY(FG_TRIGGER_PULSEFORMGEN##g##_DOWNSCALE,       IntegerValue, both), \
    KEY(FG_TRIGGER_PULSEFORMGEN##g##_DOWNSCALE_PHASE, IntegerValue, both), \
    KEY(FG_TRIGGER_PULSEFORMGEN##g##_DELAY,           RealValue,    both), \
    KEY(FG_TRIGGER_PULSEFORMGEN##g##_WIDTH,           RealValue,    both)

const std::array<PersistedKey, PersistedKeys::inFiles + 1>& PersistedKeys::all() {
    static const std::array<PersistedKey, inFiles + 1> keys{{
        KEY(FG_TIMEOUT,                                     IntegerValue, both),
        KEY(FG_GBE_CAMTYPE,                                 IntegerValue, both),
        KEY(FG_MTU_SIZE,                                    IntegerValue, both),
        KEY(FG_SWAP_CHANNELS,                               IntegerValue, both),
        KEY(FG_CAMERA_WIDTH,                                IntegerValue, both),
        KEY(FG_WIDTH,                                       IntegerValue, both),
        KEY(FG_HEIGHT,                                      IntegerValue, both),
        KEY(FG_XOFFSET,                                     IntegerValue, both),
        KEY(FG_YOFFSET,                                     IntegerValue, both),
        KEY(FG_FORMAT,                                      IntegerValue, both),
        KEY(FG_BITALIGNMENT,                                IntegerValue, both),
        KEY(FG_LUT_TYPE,                                    IntegerValue, both),
        KEY_WITHOUT_DEFAULT(FG_LUT_CUSTOM_FILE,             TextValue,    cacheOnly),
        KEY_WITHOUT_DEFAULT(FG_PROCESSING_OFFSET,           RealValue,    cacheOnly),
        KEY_WITHOUT_DEFAULT(FG_PROCESSING_GAIN,             RealValue,    cacheOnly),
        KEY_WITHOUT_DEFAULT(FG_PROCESSING_GAMMA,            RealValue,    cacheOnly),
        KEY_WITHOUT_DEFAULT(FG_PROCESSING_INVERT,           IntegerValue, cacheOnly),
        KEY(FG_AREATRIGGERMODE,                             IntegerValue, applyOnly),
        KEY(FG_TRIGGERSTATE,                                IntegerValue, applyOnly),
        KEY(FG_TRIGGER_FRAMESPERSECOND,                     RealValue,    both),
        KEY(FG_TRIGGERIN_DEBOUNCE,                          RealValue,    both),
        KEY(FG_TRIGGERIN_SRC,                               IntegerValue, both),
        KEY(FG_TRIGGERIN_POLARITY,                          IntegerValue, both),
        KEY(FG_TRIGGERIN_DOWNSCALE,                         IntegerValue, both),
        KEY(FG_TRIGGERIN_DOWNSCALE_PHASE,                   IntegerValue, both),
        KEY(FG_TRIGGERIN_BYPASS_SRC,                        IntegerValue, both),
        KEY(FG_TRIGGERIN_STATS_PULSECOUNT_CLEAR,            IntegerValue, none),
        KEY(FG_TRIGGER_MULTIPLY_PULSES,                     IntegerValue, both),
        KEY(FG_TRIGGERQUEUE_MODE,                           IntegerValue, both),
        KEY(FG_TRIGGER_QUEUE_FILLLEVEL_EVENT_ON_THRESHOLD,  IntegerValue, both),
        KEY(FG_TRIGGER_QUEUE_FILLLEVEL_EVENT_OFF_THRESHOLD, IntegerValue, both),
        GENERATOR_KEYS(0),
        GENERATOR_KEYS(1),
        GENERATOR_KEYS(2),
        GENERATOR_KEYS(3),
        KEY(FG_CAMERA_ACTION_COMMAND_SOURCE,                IntegerValue, both),
        KEY(FG_TRIGGEROUT_SELECT0,                          IntegerValue, both),
        KEY(FG_TRIGGEROUT_SELECT1,                          IntegerValue, both),
        KEY(FG_TRIGGEROUT_SELECT2,                          IntegerValue, both),
        KEY(FG_TRIGGEROUT_SELECT3,                          IntegerValue, both),
        KEY(FG_TRIGGEROUT_STATS_SOURCE,                     IntegerValue, both),
        KEY(FG_TRIGGER_OUTPUT_EVENT_SELECT,                 IntegerValue, both),
    }};
    return keys;
}
// clang-format on
