#pragma once

#include <string>
#include <vector>

namespace kavo::test {

/// One line of data/Catalogue.tsv: what is documented about a standard parameter. Empty texts stand for
/// nothing.
struct CatalogueRow {
    std::string name;
    int id;
    std::string displayName;
    std::string type; ///< "uint", "double", "enum", "string", "uint field"; empty: not in the registry
    std::string from, to, step; ///< numbers as text; for an enumeration `to` is the number of entries
    int access, range, visibility;
    std::string unit, fileExtension;
    std::string category; ///< groups from the top, separated by "/"
    std::string description;
};

/// All standard parameters in their documented order.
const std::vector<CatalogueRow>& documentedCatalogue();
const CatalogueRow& documentedParameter(const std::string& name);

/// One line of data/Enumerations.tsv.
struct EnumerationRow {
    std::string displayName;
    int value;
    std::string symbol;
};

/// The documented entries of a parameter on a port, in their order.
std::vector<EnumerationRow> documentedEntries(const std::string& parameter, int port);

} // namespace kavo::test
