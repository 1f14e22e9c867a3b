#pragma once

#include "grabber_basis/parameterInfo.h"

#include <deque>

/// The id space: standard ids up to registerIdBase, then the design's registers, then the inner handle's
/// parameters.
namespace family {

constexpr int registerIdBase = 1000000;
constexpr int inspectedIdBase = 2000000;
constexpr const char* registerPrefix = "DRA_";
constexpr const char* inspectedPrefix = "DQXA_";

} // namespace family

/// Calls `visit` for every record of a parameter tree that is no group, breadth first.
template <class Visit>
void walkParameterTree(const RegisterInfo* roots, Visit visit) {
    std::deque<const RegisterInfo*> groups;
    const auto take = [&](const RegisterInfo* record) {
        if (record->format == REG_FORMAT_GROUP) {
            groups.push_back(record);
        } else {
            visit(*record);
        }
    };
    for (const RegisterInfo* root = roots; root != nullptr; root = root->next) {
        take(root);
    }
    for (; !groups.empty(); groups.pop_front()) {
        const GroupReg& group = groups.front()->u.gReg;
        for (int index = 0; index < group.nrOfElements; ++index) {
            if (group.elements[index] != nullptr) {
                take(group.elements[index]);
            }
        }
    }
}
