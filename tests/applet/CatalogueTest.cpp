// Every standard parameter: its name, id, index and description through the exports, and its record in the
// registry of either port.

#include "applet/ParameterFamilies.h"
#include "platform/ErrorCodes.h"
#include "tests/applet/CatalogueData.h"
#include "tests/support/AppletOnBoard.h"

#include <cstring>
#include <map>

namespace error = kavo::error;
using kavo::test::CatalogueRow;
using kavo::test::documentedCatalogue;

namespace {

std::string textOf(const char* text) { return text != nullptr ? text : ""; }

/// Category path of every parameter id, and the records that are no group.
class TreeOfPort {
  public:
    TreeOfPort(Fg_Struct* handle, int port) {
        for (const RegisterInfo* root = Fg_getParameterInfo(handle, port); root != nullptr;
             root = root->next) {
            topLevel.push_back(root->name);
            visit(*root, root->name);
        }
    }

    std::vector<std::string> topLevel;
    std::map<std::string, std::vector<std::string>> children; ///< in order; groups as "name/"
    std::map<int, std::string> paths;
    std::map<int, const RegisterInfo*> records;

  private:
    void visit(const RegisterInfo& group, const std::string& path) {
        for (int index = 0; index < group.u.gReg.nrOfElements; ++index) {
            const RegisterInfo& child = *group.u.gReg.elements[index];
            const bool isGroup = child.format == REG_FORMAT_GROUP;
            children[path].push_back(isGroup ? child.name + std::string("/") : child.parameterName);
            if (isGroup) {
                visit(child, path + '/' + child.name);
            } else {
                paths[child.id] = path;
                records[child.id] = &child;
            }
        }
    }
};

/// A slave's registry is as it was registered: no default value has moved a limit.
class Catalogue : public testing::TestWithParam<int> {
  protected:
    AppletOnBoard applet{AppletOnBoard::Role::slave};
    TreeOfPort tree{applet.handle(), GetParam()};

    void expectLimits(const CatalogueRow& row, const RegisterInfo& record) const {
        if (row.type == "uint") {
            EXPECT_EQ(record.format, REG_FORMAT_UINT);
            EXPECT_EQ(std::to_string(record.u.uiReg.from), row.from);
            EXPECT_EQ(std::to_string(record.u.uiReg.to), row.to);
            EXPECT_EQ(std::to_string(record.u.uiReg.steps), row.step);
        } else if (row.type == "double") {
            EXPECT_EQ(record.format, REG_FORMAT_DOUBLE);
            EXPECT_EQ(record.u.dReg.from, std::stod(row.from));
            EXPECT_EQ(record.u.dReg.to, std::stod(row.to));
            EXPECT_EQ(record.u.dReg.steps, std::stod(row.step));
        } else if (row.type == "uint field") {
            EXPECT_EQ(record.format, REG_FORMAT_UINTFIELD);
            EXPECT_EQ(record.u.uifReg.nrOfElements, 4096U);
            EXPECT_EQ(std::to_string(record.u.uifReg.from), row.from);
            EXPECT_EQ(std::to_string(record.u.uifReg.to), row.to);
        } else if (row.type == "string") {
            EXPECT_EQ(record.format, REG_FORMAT_STRING);
            EXPECT_EQ(textOf(record.u.sReg.FileExtension), row.fileExtension);
        } else {
            expectEntries(row, record);
        }
    }
    static void expectEntries(const CatalogueRow& row, const RegisterInfo& record) {
        EXPECT_EQ(record.format, REG_FORMAT_ENUM);
        const auto entries = kavo::test::documentedEntries(row.name, GetParam());
        ASSERT_EQ(record.u.eReg.nrOfElements, static_cast<int>(entries.size()));
        for (std::size_t index = 0; index < entries.size(); ++index) {
            EXPECT_STREQ(record.u.eReg.enumNames[index], entries[index].displayName.c_str());
            EXPECT_EQ(record.u.eReg.enumValues[index], entries[index].value);
            EXPECT_STREQ(record.u.eReg.enumDefName[index], entries[index].symbol.c_str());
        }
    }
};
FOR_BOTH_PORTS(Catalogue);

} // namespace

TEST_P(Catalogue, HoldsEveryRowInOrder) {
    Fg_Struct* handle = applet.handle();
    ASSERT_EQ(documentedCatalogue().size(), 93U);
    EXPECT_EQ(Fg_getNrOfParameter(handle), 93);
    int index = 0;
    for (const CatalogueRow& row : documentedCatalogue()) {
        SCOPED_TRACE(row.name);
        EXPECT_STREQ(Fg_getParameterName(handle, index), row.name.c_str());
        EXPECT_EQ(Fg_getParameterId(handle, index), row.id);
        EXPECT_EQ(Fg_getParameterIdByName(handle, row.name.c_str()), row.id);
        EXPECT_EQ(applet.lastError(), 0);
        ++index;
    }
}

TEST_P(Catalogue, RegistersEveryRowThatHasADescriptionInTheTree) {
    std::size_t registered = 0;
    for (const CatalogueRow& row : documentedCatalogue()) {
        SCOPED_TRACE(row.name);
        const auto found = tree.records.find(row.id);
        ASSERT_EQ(found != tree.records.end(), !row.type.empty());
        if (found == tree.records.end()) {
            continue;
        }
        ++registered;
        const RegisterInfo& record = *found->second;
        EXPECT_STREQ(record.name, row.displayName.c_str());
        EXPECT_STREQ(record.parameterName, row.name.c_str());
        EXPECT_EQ(record.accessFlags, row.access);
        EXPECT_EQ(record.rangeFlags, row.range);
        EXPECT_EQ(record.visibilityFlags, row.visibility);
        EXPECT_EQ(textOf(record.unit), row.unit);
        EXPECT_EQ(record.unit == nullptr, row.unit.empty());
        EXPECT_EQ(record.port, GetParam());
        EXPECT_EQ(tree.paths[row.id], row.category);
        expectLimits(row, record);
    }
    EXPECT_EQ(tree.records.size(), registered);
    EXPECT_EQ(registered, 86U);
}

TEST_P(Catalogue, TheTreeRunsFromTheLastCategoryToTheFirst) {
    EXPECT_EQ(tree.topLevel,
              (std::vector<std::string>{"Applet Properties", "Miscellaneous", "Output Format", "Lookup Table",
                                        "Overflow", "Trigger", "ROI", "Camera"}));
}

TEST_P(Catalogue, ACategoryHoldsItsParametersInOrderThenItsSubcategories) {
    std::map<std::string, std::vector<std::string>> expected;
    for (const CatalogueRow& row : documentedCatalogue()) {
        if (!row.type.empty()) {
            expected[row.category].push_back(row.name);
        }
    }
    const std::vector<std::pair<std::string, std::vector<std::string>>> subcategories{
        {"Trigger",
         {"Trigger Input/", "Sequencer/", "Queue/", "Pulse Form Generator 0/", "Pulse Form Generator 1/",
          "Pulse Form Generator 2/", "Pulse Form Generator 3/", "Camera Action Command/", "Digital Output/",
          "Output Event/"}},
        {"Trigger/Trigger Input", {"External/", "Software Trigger/", "Statistics/"}},
        {"Trigger/Digital Output", {"Statistics/"}},
        {"Lookup Table", {"Processing/"}},
    };
    for (const auto& [path, names] : subcategories) {
        expected[path].insert(expected[path].end(), names.begin(), names.end());
    }
    EXPECT_EQ(tree.children, expected);
}

TEST_P(Catalogue, DescriptionsStandWordForWord) {
    int described = 0;
    for (const CatalogueRow& row : documentedCatalogue()) {
        std::array<char, 512> text{};
        std::strcpy(text.data(), row.name.c_str());
        const int code = Fg_getParameterWithType(applet.handle(), parameterDescriptionQuery, text.data(),
                                                 static_cast<unsigned>(GetParam()), 2);
        EXPECT_EQ(code, row.description.empty() ? error::invalidParameter : 0) << row.name;
        EXPECT_EQ(applet.lastError(), code);
        EXPECT_STREQ(text.data(), row.description.empty() ? row.name.c_str() : row.description.c_str());
        described += row.description.empty() ? 0 : 1;
    }
    EXPECT_EQ(described, 85);
}

TEST_P(Catalogue, ParametersThatCannotBeWrittenAreRegisteredReadOnly) {
    for (const CatalogueRow& row : documentedCatalogue()) {
        if (!row.type.empty()) {
            const std::array<char, 64> zeros{};
            const int code = Fg_setParameterWithType(applet.handle(), row.id, zeros.data(),
                                                     static_cast<unsigned>(GetParam()), 2);
            EXPECT_EQ(code == error::notAvailable, row.access == 1) << row.name;
        }
    }
}
