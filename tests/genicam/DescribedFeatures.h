#pragma once

#include "tests/applet/CatalogueData.h"

#include <vector>

namespace kavo::test {

/// The documented parameters that the XML description has a template for.
inline std::vector<CatalogueRow> describedFeatures() {
    std::vector<CatalogueRow> rows;
    for (const CatalogueRow& row : documentedCatalogue()) {
        if (!row.type.empty() && row.type != "uint field") {
            rows.push_back(row);
        }
    }
    return rows;
}

/// Those of one type: "uint", "double", "enum" or "string".
inline std::vector<CatalogueRow> describedFeatures(const std::string& type) {
    std::vector<CatalogueRow> rows;
    for (const CatalogueRow& row : describedFeatures()) {
        if (row.type == type) {
            rows.push_back(row);
        }
    }
    return rows;
}

} // namespace kavo::test
