#include "tests/console/ProgramRun.h"

#include <gtest/gtest.h>
#include <set>
#include <sstream>

namespace orbctl::test {

namespace {

using Names = std::set<std::string>;

/// One thing that an applet does wrong, and the checks that have to fail for it.
struct Fault {
    const char* name;
    std::vector<std::string> words; ///< what is checked
    Names checks;
};

const std::vector<Fault>& faults() {
    static const std::vector<Fault> all = {
        // names and ids
        {"ignoresCase", {"FG_WIDTH"}, {"is unknown in other letters"}},
        {"givesWrongIds", {"FG_WIDTH"}, {"has its id by its name", "has its id at its index"}},
        {"listsNothing", {"FG_WIDTH"}, {"is listed"}},
        {"findsEverything",
         {"lookups", "events", "xml"},
         {"refuses a name that is not there", "has no name at an index that is not there",
          "refuses an index that is not there", "has no mask for a name that is not there",
          "has no name for a mask of no one event", "has no tree for a port that is not there",
          "has no description of a port that is not there"}},
        {"takesStrangeIds",
         {"lookups"},
         {"refuses an id that is not there", "leaves the buffer of a strange id alone",
          "changes nothing by a strange id"}},
        {"describesStrangers",
         {"lookups"},
         {"has no description of a strange name", "leaves a strange name alone"}},
        {"answersEveryQuestion",
         {"lookups"},
         {"refuses a selector that is not there", "refuses a port that is not there",
          "refuses a constant that is not there", "refuses a constant without a name"}},
        {"needsOutputs", {"lookups"}, {"answers without a place for its outputs"}},
        {"answersNoHandle", {"handles"}, {"answers a null handle", "answers a handle without an applet"}},
        // descriptions
        {"turnsLimits", {"FG_WIDTH"}, {"has its minimum below its maximum"}},
        {"hasOddSteps", {"FG_WIDTH"}, {"reaches its maximum in whole steps"}},
        {"describesPortsApart", {"FG_WIDTH"}, {"is the same on every port"}},
        {"hasEntriesTwice", {"FG_FORMAT"}, {"has each entry once", "has the constant that its entry names"}},
        {"hasNoEntries", {"FG_FORMAT"}, {"has entries"}},
        // reading
        {"describesAsWriteOnly", {"FG_WIDTH"}, {"refuses to be read"}},
        {"refusesReads", {"FG_WIDTH", "FG_LUT_VALUE"}, {"can be read", "gives an element"}},
        {"refusesStrangeTypes", {"FG_WIDTH"}, {"answers every type code"}},
        {"readsByType", {"FG_WIDTH"}, {"gives the same value for every type code"}},
        {"readsTooMuch", {"FG_WIDTH"}, {"leaves what stands around the value alone"}},
        {"hasDirtyUpperWords", {"FG_WIDTH"}, {"has a clean upper word where 64 bits are read"}},
        {"readsIntoNothing", {"FG_WIDTH"}, {"refuses to be read into nothing"}},
        {"hasEveryPort",
         {"FG_WIDTH"},
         {"cannot be read on a port that is not there", "leaves the buffer of a refused read alone",
          "refuses to be written on a port that is not there"}},
        {"readsOutside",
         {"FG_WIDTH", "FG_LUT_VALUE"},
         {"has a value that its description lets it have",
          "has an element that its description lets it have"}},
        {"movesIndices", {"FG_LUT_VALUE"}, {"leaves the index of an element alone"}},
        {"readsBehindTables", {"FG_LUT_VALUE"}, {"has no element behind its last"}},
        {"throws", {"FG_WIDTH"}, {"throws nothing"}},
        // writing
        {"refusesWrites",
         {"FG_WIDTH", "FG_FORMAT", "FG_SENDSOFTWARETRIGGER", "FG_LUT_VALUE", "FG_LUT_CUSTOM_FILE",
          "FG_BITALIGNMENT"},
         {"accepts its minimum", "accepts its maximum", "accepts a value in its middle",
          "accepts the value above its minimum", "accepts the value below its maximum", "accepts its entry",
          "accepts an element", "can be written with every type code", "takes its former value back",
          "gets what its values need", "can be written during an acquisition",
          "remembers what is written while it is read-only"}},
        {"ignoresWrites",
         {"FG_WIDTH", "FG_LUT_VALUE", "FG_LUT_SAVE_FILE", "FG_LUT_CUSTOM_FILE"},
         {"has the value that was written", "has the element that was written",
          "has the file name that was written", "has the value that it remembers"}},
        {"writesByType", {"FG_WIDTH"}, {"has the value that was written with every type code"}},
        {"overwritesCallers", {"FG_WIDTH"}, {"leaves the caller's value alone when it is written"}},
        {"writesOtherWhileAcquiring",
         {"FG_WIDTH"},
         {"keeps its value through a write during an acquisition"}},
        {"acceptsEverything",
         {"FG_WIDTH", "FG_FORMAT", "FG_PROCESSING_GAIN", "FG_APPLET_VERSION"},
         {"refuses what lies below its minimum", "refuses what lies above its maximum",
          "refuses what is off its step", "refuses what is none of its entries",
          "refuses what is not a number", "refuses to be written while it is read-only"}},
        {"writesFromNothing", {"FG_WIDTH"}, {"refuses to be written from nothing"}},
        {"writesBehindTables", {"FG_LUT_VALUE"}, {"refuses an element behind its last"}},
        {"takesRefusedValues", {"FG_WIDTH"}, {"keeps its value when it refuses"}},
        {"changesOthersOnRefusal", {"FG_WIDTH"}, {"changes nothing else when it refuses"}},
        {"storesReadOnly", {"FG_APPLET_VERSION"}, {"keeps its value when it is read-only"}},
        {"keepsNoTimeout", {"FG_TIMEOUT"}, {"has at the end what it had at the beginning"}},
        {"refusesFiles",
         {"FG_LUT_TYPE"},
         {"has a file saved for it", "loads a file that was saved", "brings back the table that was saved",
          "refuses a file that is not there"}},
        {"hasItsOwnFileCodes",
         {"FG_LUT_SAVE_FILE"},
         {"takes a file name or says what is wrong with the file"}},
        // the last error
        {"forgetsErrors",
         {"FG_WIDTH", "lookups", "events", "xml", "configuration"},
         {"keeps the code of a refused read as last error", "keeps the code of a refused write as last error",
          "keeps the code of a refused name as last error", "keeps the code of a refused index as last error",
          "keeps the code of a refused mask as last error", "keeps the code of a refused event as last error",
          "keeps the code of a refused port as last error", "keeps the code of a short buffer as last error",
          "keeps the code of a refused file as last error", "keeps a failed load as last error"}},
        {"invertsErrors",
         {"FG_WIDTH", "events", "xml", "configuration"},
         {"leaves no error when its name is found", "leaves no error when its index is found",
          "leaves no error when it is read", "leaves no error when it is written",
          "leaves no error when its mask is found", "leaves no error when it tells the size",
          "leaves no error when it saves", "leaves no error when it loads"}},
        // events
        {"givesWrongMasks", {"events"}, {"has its mask by its name"}},
        {"renamesEvents", {"events"}, {"has its name by its mask"}},
        // the XML description
        {"hasNoDescription", {"xml"}, {"tells the size of the description"}},
        {"givesNoDescription", {"xml"}, {"gives the description"}},
        {"tellsTooManyBytes", {"xml"}, {"ends the description where it says"}},
        {"tellsOtherBytes", {"xml"}, {"tells the bytes of the description"}},
        {"writesBehindDescriptions", {"xml"}, {"leaves what stands behind the description alone"}},
        {"fillsShortBuffers",
         {"xml"},
         {"refuses a buffer that is too short", "leaves the size of a short buffer alone",
          "leaves a short buffer alone"}},
        {"xml:<?xml|<!xml", {"xml"}, {"begins as XML does"}},
        {"xml:Name='FG_WIDTH'|Name='FG_DEPTH'", {"FG_WIDTH"}, {"stands in the XML description"}},
        {"xml:<pFeature>FG_WIDTH<|<pFeature>FG_DEPTH<",
         {"FG_WIDTH"},
         {"is in a category of the XML description"}},
        {"xml:<Address>100<|<Address>101<", {"FG_WIDTH"}, {"has its id as address in the XML description"}},
        {"xml:>RW<|>RO<", {"FG_WIDTH"}, {"has its access in the XML description"}},
        {"xml:Image width|Image depth", {"FG_WIDTH"}, {"has its sentence in the XML description"}},
        {"xml:<Min>16<|<Min>17<", {"FG_WIDTH"}, {"has its minimum in the XML description"}},
        {"xml:<Max>4096<|<Max>4095<", {"FG_WIDTH"}, {"has its maximum in the XML description"}},
        {"xml:<Inc>16<|<Inc>32<", {"FG_WIDTH"}, {"has its step in the XML description"}},
        {"xml:Name=\"FG_GRAY16\"><Value>1|Name=\"FG_GRAY16\"><Value>2",
         {"FG_FORMAT"},
         {"has its entry in the XML description"}},
        // configurations
        {"savesNothing", {"configuration"}, {"saves the configuration"}},
        {"savesAnywhere",
         {"configuration"},
         {"refuses a file that it cannot make", "makes no file of another name",
          "refuses to save into nothing"}},
        {"loadsNothing",
         {"configuration"},
         {"loads what was saved", "lets a saved configuration be loaded",
          "comes back with a saved configuration"}},
        {"loadsAnything",
         {"configuration"},
         {"refuses a file that is not there", "refuses a file that bears another name",
          "refuses a file of another applet", "refuses a file that holds nothing",
          "refuses to load from nothing"}},
        {"loadsOtherValues",
         {"configuration"},
         {"stays as it is when what was just saved is loaded", "changes nothing when it refuses a file"}},
    };
    return all;
}

Program overApplet(const char* file, const std::string& fault) {
    return console()
        .environment("ORBELLINE_APPLET", file)
        .environment("ORBELLINE_RIGHT_APPLET", ORBELLINE_APPLET_FILE)
        .environment("ORBELLINE_APPLET_FAULT", fault);
}

/// The check of an applet with a fault.
ProgramResult checked(const char* file, const std::string& fault, std::vector<std::string> words) {
    words.insert(words.begin(), {"check", "--json"});
    return overApplet(file, fault).run(words);
}

/// The checks in a result with this outcome, each once.
Names checksThat(const std::string& outcome, const ProgramResult& result) {
    std::istringstream lines(evaluated(
        result.output, "'\\n'.join({c['check'] for c in data['checks'] if c['result']=='" + outcome + "'})"));
    Names names;
    for (std::string line; std::getline(lines, line);)
        names.insert(line);
    return names;
}

void expectFailures(const char* file, const Fault& fault) {
    const ProgramResult result = checked(file, fault.name, fault.words);
    EXPECT_EQ(result.status, 1) << result.messages;
    const Names failed = checksThat("FAIL", result);
    for (const std::string& check : fault.checks)
        EXPECT_EQ(failed.count(check), 1U) << "does not fail: " << check;
}

void PrintTo(const Fault& fault, std::ostream* stream) { *stream << fault.name; }

class ConformanceFault : public testing::TestWithParam<Fault> {};

} // namespace

TEST_P(ConformanceFault, IsFoundByTheChecksThatLookForIt) {
    expectFailures(ORBELLINE_WRONG_APPLET_FILE, GetParam());
}

std::string titleOf(const testing::TestParamInfo<Fault>& fault) {
    std::string title = "F" + std::to_string(fault.index) + "_";
    for (const char letter : std::string(fault.param.name))
        title += std::isalnum(static_cast<unsigned char>(letter)) != 0 ? std::string(1, letter) : "";
    return title;
}

INSTANTIATE_TEST_SUITE_P(Each, ConformanceFault, testing::ValuesIn(faults()), titleOf);

TEST(Conformance, MissesAFunctionThatTheAppletLacks) {
    expectFailures(ORBELLINE_LACKING_APPLET_FILE, {"", {"handles"}, {"is exported"}});
}

TEST(Conformance, FindsNothingWrongBehindAnAppletThatOnlyPassesOn) {
    const ProgramResult result = overApplet(ORBELLINE_WRONG_APPLET_FILE, "").run({"check", "--brief"});
    EXPECT_EQ(result.status, 0) << result.output;
}

TEST(Conformance, HasAFaultForEveryKindOfCheck) {
    Names found = {"is exported"};
    for (const Fault& fault : faults())
        found.insert(fault.checks.begin(), fault.checks.end());
    const ProgramResult result = orbctl({"check", "--json"});
    EXPECT_EQ(result.status, 0);
    for (const std::string& check : checksThat("ok", result))
        EXPECT_EQ(found.count(check), 1U) << "no fault makes it fail: " << check;
}

} // namespace orbctl::test
