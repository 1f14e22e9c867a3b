#include "fuzz/XmlScan.h"

#include "fuzz/FuzzInput.h"

#include <algorithm>
#include <tuple>

namespace kavo::fuzz {

namespace {

constexpr std::pair<std::string_view, char> entities[] = {
    {"&amp;", '&'}, {"&lt;", '<'}, {"&gt;", '>'}, {"&quot;", '"'}, {"&apos;", '\''}};

bool isBlank(std::string_view text) { return text.find_first_not_of("\r\n ") == std::string_view::npos; }

auto asTuple(const XmlElement& element) {
    return std::tie(element.tag, element.parent, element.attributes, element.text);
}

/// Goes through a document from its start.
class Scanner {
  public:
    explicit Scanner(std::string_view document) : mRest(document) {}

    std::vector<XmlElement> scan() {
        takeThrough("?>");
        while (!mRest.empty()) {
            takeText();
            if (!mRest.empty()) {
                takeTag();
            }
        }
        require(mOpen.empty() && !mElements.empty(), "every element of a document ends");
        return std::move(mElements);
    }

  private:
    std::string_view takeThrough(std::string_view end) {
        const std::size_t found = mRest.find(end);
        require(found != std::string_view::npos, "a document does not break off");
        const std::string_view taken = mRest.substr(0, found);
        mRest.remove_prefix(found + end.size());
        return taken;
    }

    void takeText() {
        const std::string_view text = mRest.substr(0, mRest.find('<'));
        mRest.remove_prefix(text.size());
        if (mOpen.empty()) {
            require(isBlank(text), "no text stands outside the root");
        } else {
            mElements[mOpen.back()].text += withoutEntities(text);
        }
    }

    void takeTag() {
        mRest.remove_prefix(1);
        if (mRest.substr(0, 1) == "/") {
            mRest.remove_prefix(1);
            const std::string_view tag = takeThrough(">");
            require(!mOpen.empty() && mElements[mOpen.back()].tag == tag, "the element that ends is open");
            end(mOpen.back());
            mOpen.pop_back();
            return;
        }
        require(!mOpen.empty() || mElements.empty(), "a document has one root");
        XmlElement element;
        element.parent = mOpen.empty() ? "" : mElements[mOpen.back()].tag;
        element.tag = takeName();
        takeAttributes(element);
        mOpen.push_back(mElements.size());
        mElements.push_back(std::move(element));
    }

    /// An element holds a text or elements; between these stand only line ends.
    void end(std::size_t index) {
        if (index + 1 < mElements.size()) {
            std::string& text = mElements[index].text;
            require(isBlank(text), "a text does not stand between elements");
            text.clear();
        }
    }

    void takeAttributes(XmlElement& element) {
        for (skipSpace(); mRest.substr(0, 1) != ">"; skipSpace()) {
            std::string name = takeName();
            require(mRest.size() > 2 && mRest[0] == '=' && (mRest[1] == '"' || mRest[1] == '\''),
                    "an attribute has a value in quotes");
            const char quote = mRest[1];
            mRest.remove_prefix(2);
            element.attributes.emplace_back(std::move(name),
                                            withoutEntities(takeThrough(std::string_view(&quote, 1))));
        }
        mRest.remove_prefix(1);
    }

    std::string takeName() {
        const auto* end = std::find_if(mRest.begin(), mRest.end(), [](char character) {
            const auto lower = static_cast<char>(character | 0x20);
            return (lower < 'a' || lower > 'z') && character != ':' && character != '_';
        });
        std::string name(mRest.begin(), end);
        require(!name.empty(), "a tag and an attribute have a name");
        mRest.remove_prefix(name.size());
        return name;
    }

    void skipSpace() {
        mRest.remove_prefix(std::min(mRest.find_first_not_of(" \n"), mRest.size()));
        require(!mRest.empty(), "a tag ends");
    }

    std::string_view mRest;
    std::vector<XmlElement> mElements;
    std::vector<std::size_t> mOpen;
};

} // namespace

std::string XmlElement::attribute(std::string_view name) const {
    const auto found = std::find_if(attributes.begin(), attributes.end(),
                                    [&](const auto& attribute) { return attribute.first == name; });
    return found != attributes.end() ? found->second : std::string();
}

bool XmlElement::operator<(const XmlElement& other) const { return asTuple(*this) < asTuple(other); }
bool XmlElement::operator==(const XmlElement& other) const { return asTuple(*this) == asTuple(other); }

std::string withoutEntities(std::string_view text) {
    std::string plain;
    for (;;) {
        const std::string_view run = text.substr(0, text.find_first_of("&<>\"'"));
        plain += run;
        text.remove_prefix(run.size());
        if (text.empty()) {
            return plain;
        }
        const auto* entity =
            std::find_if(std::begin(entities), std::end(entities), [&](const auto& candidate) {
                return text.substr(0, candidate.first.size()) == candidate.first;
            });
        require(entity != std::end(entities), "characters that XML reserves are entities");
        plain += entity->second;
        text.remove_prefix(entity->first.size());
    }
}

std::vector<XmlElement> scanXml(std::string_view document) { return Scanner(document).scan(); }

} // namespace kavo::fuzz
