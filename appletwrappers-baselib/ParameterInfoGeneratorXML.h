#pragma once

#include "appletwrappers-baselib/Category.h"
#include "appletwrappers-baselib/XmlText.h"
#include "grabber_basis/parameterInfo.h"

#include <cstdint>
#include <map>
#include <string>
#include <string_view>

/// Writes the elements of a GenApi 1.0 document into one growing text. A line feed follows every complete
/// element.
class ParameterInfoGeneratorXML {
  public:
    /// What every node of a parameter shows.
    struct Node {
        const RegisterInfo& info;     ///< address (its id) and access flags
        std::string name;             ///< filtered for XML
        std::string_view description; ///< as it is; empty: the node has none
    };

    ParameterInfoGeneratorXML();

    /// \param modelName  filtered for XML
    void openDocument(std::string_view modelName);
    void closeDocument();

    /// An integer and its register; an increment of 0 is left out.
    void infoGenerate(const Node& node, std::uint32_t minimum, std::uint32_t maximum,
                      std::uint32_t increment);
    void infoGenerate(const Node& node, int minimum, int maximum, int increment);
    /// A float and its register.
    void infoGenerate(const Node& node, double minimum, double maximum);
    /// An enumeration and its register; the entries' names are filtered already.
    void infoGenerate(const Node& node, const std::map<int, std::string>& entries);
    /// A text register.
    void infoGenerate(const Node& node);

    /// Ends a parameter: a line feed and a carriage return, in this order.
    void endParameter() { mText << "\n\r"; }

    /// A category and, behind it, its child categories, depth first.
    void writeCategory(const Category& category);

    [[nodiscard]] std::string text() const { return mText.str(); }

  private:
    template <class Limit>
    void integer(const Node& node, Limit minimum, Limit maximum, Limit increment);
    void registerPart(const RegisterInfo& info, std::size_t length);
    void integerRegister(const Node& node, std::string_view sign);
    void descriptionAndValue(const Node& node);
    void description(const Node& node);

    XmlText mText;
};
