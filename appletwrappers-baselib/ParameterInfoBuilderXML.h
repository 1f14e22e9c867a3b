#pragma once

#include <memory>
#include <string>

class Fg_ParameterInfo;
class FgQxWrapper;
class ParameterInfoBuilderXMLPrivate;

/// Builds the GenApi 1.0 description of one camera port from the registry of parameter descriptions.
///
/// Register-level parameters, parameters without visibility, and kinds that have no node (fields, 64-bit
/// integers) are left out. The descriptions are asked of the wrapper, which takes its parameter lock for
/// each.
class ParameterInfoBuilderXML {
  public:
    ParameterInfoBuilderXML(Fg_ParameterInfo& registry, FgQxWrapper& wrapper, int port);
    ~ParameterInfoBuilderXML();
    ParameterInfoBuilderXML(const ParameterInfoBuilderXML&) = delete;
    ParameterInfoBuilderXML& operator=(const ParameterInfoBuilderXML&) = delete;

    /// The whole document, encoded in UTF-8.
    std::string build();

  private:
    std::unique_ptr<ParameterInfoBuilderXMLPrivate> d;
};
