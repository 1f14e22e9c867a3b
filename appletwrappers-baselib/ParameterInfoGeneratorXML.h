#pragma once

#include "appletwrappers-baselib/Category.h"
#include "grabber_basis/parameterInfo.h"

#include <cstdint>
#include <map>
#include <string>
#include <string_view>

/// Writes the elements of a GenApi 1.0 document into one growing text. A line feed follows every complete
/// element.
class ParameterInfoGeneratorXML {
  public:
    /// What every node of a parameter shows, filtered for XML.
    struct Node {
        const RegisterInfo& info; ///< address (its id) and access flags
        std::string name;
        std::string description; ///< empty: the node has none
    };

    void openDocument(std::string_view modelName);
    void closeDocument();

    /// An integer and its register; limits in decimal, an increment of 0 is left out.
    template <class Limit>
    void infoGenerate(const Node& node, Limit minimum, Limit maximum, Limit increment) {
        integer(node, std::to_string(minimum), std::to_string(maximum),
                increment != 0 ? std::to_string(increment) : std::string());
    }
    /// A float and its register.
    void infoGenerate(const Node& node, double minimum, double maximum);
    /// An enumeration and its register; the entries' names are filtered already.
    void infoGenerate(const Node& node, const std::map<int, std::string>& entries);
    /// A text register.
    void infoGenerate(const Node& node);

    /// Ends a parameter: a line feed and a carriage return, in this order.
    void endParameter() { mText += "\n\r"; }

    /// A category and, behind it, its child categories, depth first.
    void writeCategory(const Category& category);

    [[nodiscard]] std::string takeText() { return std::move(mText); }

  private:
    void integer(const Node& node, const std::string& minimum, const std::string& maximum,
                 const std::string& increment);
    void registerPart(const RegisterInfo& info, int length);
    void integerRegister(const Node& node, std::string_view sign);
    void element(std::string_view tag, std::string_view content);
    void description(const Node& node);
    void valueReference(const Node& node);

    std::string mText;
};
