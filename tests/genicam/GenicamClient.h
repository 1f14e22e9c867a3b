#pragma once

#include "tests/genicam/AppletDevice.h"

#include <cstdint>
#include <map>
#include <memory>
#include <ostream>
#include <string>
#include <vector>

namespace kavo::test {

template <typename Number>
struct FeatureRange {
    Number from, to;

    bool operator==(const FeatureRange& other) const { return from == other.from && to == other.to; }
    friend std::ostream& operator<<(std::ostream& out, const FeatureRange& range) {
        return out << range.from << " to " << range.to;
    }
};

/// A program that knows nothing of a port but its XML description, which Aravis reads for it. It sees the
/// description as it was when the client was made: limits that move later need a new client.
///
/// A read that Aravis or the applet refuses fails the test. A write tells the refusal: the empty text when
/// the value was taken, the words of Aravis otherwise.
class GenicamClient {
  public:
    GenicamClient(Fg_Struct* handle, int port);

    /// "Category", "Enumeration", "Integer", "Float" or "String"; empty when there is no such feature.
    std::string kind(const std::string& name) const;
    /// Empty when the feature has none.
    std::string description(const std::string& name) const;
    bool isReadOnly(const std::string& name) const;
    /// The names that a category lists, in order.
    std::vector<std::string> features(const std::string& category) const;

    FeatureRange<std::int64_t> integerRange(const std::string& name) const;
    FeatureRange<double> floatRange(const std::string& name) const;
    std::int64_t increment(const std::string& name) const;
    /// Why Aravis has no increment for a float; empty when it has one.
    std::string floatIncrementRefusal(const std::string& name) const;
    /// Names of an enumeration's entries by their values.
    std::map<std::int64_t, std::string> entries(const std::string& name) const;
    /// Bytes of a string, its end included.
    std::int64_t maximumLength(const std::string& name) const;

    std::int64_t integer(const std::string& name) const;
    double real(const std::string& name) const;
    /// A string, or the name of an enumeration's present entry.
    std::string text(const std::string& name) const;
    std::string write(const std::string& name, std::int64_t value);
    std::string write(const std::string& name, double value);
    /// A string, or the name of an entry.
    std::string write(const std::string& name, const std::string& value);

    /// Aravis holds writes to the limits, or to the access mode, of the description only when asked to.
    void checkRanges();
    void checkAccess();

  private:
    struct Release {
        void operator()(ArvDevice* device) const { g_object_unref(device); }
    };

    template <typename Node>
    Node* node(const std::string& name) const;

    std::unique_ptr<ArvDevice, Release> mDevice;
};

} // namespace kavo::test
