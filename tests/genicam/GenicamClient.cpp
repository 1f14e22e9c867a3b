#include "tests/genicam/GenicamClient.h"

#include <gtest/gtest.h>

#include <utility>

namespace kavo::test {

namespace {

/// Frees the error and gives its words.
std::string wordsOf(GError* error) {
    std::string words = error != nullptr ? error->message : "";
    g_clear_error(&error);
    return words;
}

/// The result of a call that takes an error behind its arguments; the call has to succeed.
template <typename Function, typename... Arguments>
auto succeeded(Function function, Arguments... arguments) {
    GError* error = nullptr;
    auto result = function(arguments..., &error);
    EXPECT_EQ(wordsOf(error), "");
    return result;
}

template <typename Function, typename... Arguments>
std::string refusal(Function function, Arguments... arguments) {
    GError* error = nullptr;
    function(arguments..., &error);
    return wordsOf(error);
}

std::string textOf(const char* text) { return text != nullptr ? text : ""; }

} // namespace

GenicamClient::GenicamClient(Fg_Struct* handle, int port) : mDevice(newAppletDevice(handle, port)) {}

template <typename Node>
Node* GenicamClient::node(const std::string& name) const {
    // Whoever asks for a node's own functions knows its kind; kind() is the one that asks first.
    return reinterpret_cast<Node*>(arv_device_get_feature(mDevice.get(), name.c_str()));
}

std::string GenicamClient::kind(const std::string& name) const {
    auto* const found = node<ArvGcNode>(name);
    if (ARV_IS_GC_CATEGORY(found)) {
        return "Category";
    }
    // An enumeration of Aravis can be used as an integer too.
    if (ARV_IS_GC_ENUMERATION(found)) {
        return "Enumeration";
    }
    if (ARV_IS_GC_INTEGER(found)) {
        return "Integer";
    }
    if (ARV_IS_GC_FLOAT(found)) {
        return "Float";
    }
    return ARV_IS_GC_STRING(found) ? "String" : "";
}

std::string GenicamClient::description(const std::string& name) const {
    return textOf(arv_gc_feature_node_get_description(node<ArvGcFeatureNode>(name)));
}

bool GenicamClient::isReadOnly(const std::string& name) const {
    // Aravis 0.8.26 calls what can be read and written "WO", in the description of its own camera too.
    return arv_device_get_feature_access_mode(mDevice.get(), name.c_str()) == ARV_GC_ACCESS_MODE_RO;
}

std::vector<std::string> GenicamClient::features(const std::string& category) const {
    std::vector<std::string> names;
    for (const GSList* item = arv_gc_category_get_features(node<ArvGcCategory>(category)); item != nullptr;
         item = item->next) {
        names.emplace_back(static_cast<const char*>(item->data));
    }
    return names;
}

FeatureRange<std::int64_t> GenicamClient::integerRange(const std::string& name) const {
    auto* const feature = node<ArvGcInteger>(name);
    return {succeeded(arv_gc_integer_get_min, feature), succeeded(arv_gc_integer_get_max, feature)};
}

FeatureRange<double> GenicamClient::floatRange(const std::string& name) const {
    auto* const feature = node<ArvGcFloat>(name);
    return {succeeded(arv_gc_float_get_min, feature), succeeded(arv_gc_float_get_max, feature)};
}

std::int64_t GenicamClient::increment(const std::string& name) const {
    return succeeded(arv_gc_integer_get_inc, node<ArvGcInteger>(name));
}

std::string GenicamClient::floatIncrementRefusal(const std::string& name) const {
    return refusal(arv_gc_float_get_inc, node<ArvGcFloat>(name));
}

std::map<std::int64_t, std::string> GenicamClient::entries(const std::string& name) const {
    std::map<std::int64_t, std::string> entries;
    for (const GSList* item = arv_gc_enumeration_get_entries(node<ArvGcEnumeration>(name)); item != nullptr;
         item = item->next) {
        entries.emplace(succeeded(arv_gc_enum_entry_get_value, ARV_GC_ENUM_ENTRY(item->data)),
                        arv_gc_feature_node_get_name(ARV_GC_FEATURE_NODE(item->data)));
    }
    return entries;
}

std::int64_t GenicamClient::maximumLength(const std::string& name) const {
    return succeeded(arv_gc_string_get_max_length, node<ArvGcString>(name));
}

std::int64_t GenicamClient::integer(const std::string& name) const {
    return succeeded(arv_device_get_integer_feature_value, mDevice.get(), name.c_str());
}

double GenicamClient::real(const std::string& name) const {
    return succeeded(arv_device_get_float_feature_value, mDevice.get(), name.c_str());
}

std::string GenicamClient::text(const std::string& name) const {
    return textOf(succeeded(arv_device_get_string_feature_value, mDevice.get(), name.c_str()));
}

std::string GenicamClient::write(const std::string& name, std::int64_t value) {
    return refusal(arv_device_set_integer_feature_value, mDevice.get(), name.c_str(), value);
}

std::string GenicamClient::write(const std::string& name, double value) {
    return refusal(arv_device_set_float_feature_value, mDevice.get(), name.c_str(), value);
}

std::string GenicamClient::write(const std::string& name, const std::string& value) {
    return refusal(arv_device_set_string_feature_value, mDevice.get(), name.c_str(), value.c_str());
}

void GenicamClient::checkRanges() {
    arv_device_set_range_check_policy(mDevice.get(), ARV_RANGE_CHECK_POLICY_ENABLE);
}

void GenicamClient::checkAccess() {
    arv_device_set_access_check_policy(mDevice.get(), ARV_ACCESS_CHECK_POLICY_ENABLE);
}

} // namespace kavo::test
