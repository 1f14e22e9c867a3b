#include "tests/genicam/DescriptionRules.h"

#include <libxml/parser.h>
#include <libxml/xmlschemas.h>

#include <memory>
#include <stdexcept>

namespace kavo::test {

namespace {

struct Release {
    void operator()(xmlDoc* document) const { xmlFreeDoc(document); }
    void operator()(xmlSchemaParserCtxt* context) const { xmlSchemaFreeParserCtxt(context); }
    void operator()(xmlSchemaValidCtxt* context) const { xmlSchemaFreeValidCtxt(context); }
    void operator()(xmlSchema* schema) const { xmlSchemaFree(schema); }
    void operator()(xmlChar* text) const { xmlFree(text); }
};
template <typename Object>
using Owned = std::unique_ptr<Object, Release>;

const xmlSchema& rules() {
    static const Owned<xmlSchema> schema = [] {
        const Owned<xmlSchemaParserCtxt> parser(xmlSchemaNewParserCtxt(DESCRIPTION_RULES));
        return Owned<xmlSchema>(xmlSchemaParse(parser.get()));
    }();
    if (schema == nullptr) {
        throw std::runtime_error("the rules cannot be read");
    }
    return *schema;
}

/// The name of the node that an element belongs to: its own, or that of the nearest element around it.
std::string nameOf(xmlNode* element) {
    for (; element != nullptr && element->type == XML_ELEMENT_NODE; element = element->parent) {
        const Owned<xmlChar> name(xmlGetProp(element, reinterpret_cast<const xmlChar*>("Name")));
        if (name != nullptr) {
            return reinterpret_cast<const char*>(name.get());
        }
    }
    return "RegisterDescription";
}

/// The message without the namespace that every element has, and without its line end.
std::string wordsOf(const xmlError& error) {
    std::string words = error.message;
    const std::string nameSpace = "{http://www.genicam.org/GenApi/Version_1_0}";
    for (std::size_t place; (place = words.find(nameSpace)) != std::string::npos;) {
        words.erase(place, nameSpace.size());
    }
    return words.substr(0, words.find('\n'));
}

void note(void* lines, xmlError* error) {
    static_cast<std::vector<std::string>*>(lines)->push_back(nameOf(static_cast<xmlNode*>(error->node)) +
                                                             ": " + wordsOf(*error));
}

} // namespace

std::vector<std::string> brokenRules(const std::string& xml) {
    const Owned<xmlDoc> document(xmlReadMemory(xml.data(), static_cast<int>(xml.size()), nullptr, nullptr,
                                               XML_PARSE_NOERROR | XML_PARSE_NOWARNING | XML_PARSE_NONET));
    if (document == nullptr) {
        return {"not well-formed"};
    }
    std::vector<std::string> lines;
    const Owned<xmlSchemaValidCtxt> validation(xmlSchemaNewValidCtxt(const_cast<xmlSchema*>(&rules())));
    xmlSchemaSetValidStructuredErrors(validation.get(), note, &lines);
    xmlSchemaValidateDoc(validation.get(), document.get());
    return lines;
}

} // namespace kavo::test
