#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace orbctl {

/// Writes one JSON document, indented by two spaces. Members of an object are given as name and value; the
/// caller keeps the nesting balanced.
class JsonWriter {
  public:
    JsonWriter& beginObject();
    JsonWriter& endObject();
    JsonWriter& beginArray();
    JsonWriter& endArray();
    /// The name of the next value in an object.
    JsonWriter& name(std::string_view name);

    JsonWriter& value(std::string_view text);
    JsonWriter& value(const char* text) { return value(std::string_view(text)); }
    JsonWriter& value(const std::string& text) { return value(std::string_view(text)); }
    JsonWriter& value(std::uint64_t number);
    JsonWriter& value(std::int64_t number);
    JsonWriter& value(int number) { return value(std::int64_t{number}); }
    JsonWriter& value(unsigned number) { return value(std::uint64_t{number}); }
    /// A number that JSON cannot hold (infinite, undefined) becomes null.
    JsonWriter& value(double number);
    JsonWriter& value(bool truth);
    JsonWriter& null();

    template <typename Value>
    JsonWriter& member(std::string_view memberName, const Value& memberValue) {
        name(memberName);
        return value(memberValue);
    }

    /// The document so far, with a line end when it is complete.
    const std::string& text() const { return mText; }

  private:
    void beforeValue();
    JsonWriter& raw(std::string_view text);
    JsonWriter& begin(char bracket);
    JsonWriter& end(char bracket);
    void newLine();

    std::string mText;
    std::vector<bool> mHasElements; ///< one per open bracket
    bool mAfterName = false;
};

/// The text as a JSON string with its quotes. Bytes that are no UTF-8 become U+FFFD.
std::string jsonString(std::string_view text);

} // namespace orbctl
