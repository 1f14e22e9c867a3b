#pragma once

namespace kavo::templates {

/// Creates a file with a new name, readable and writable by its owner only (mode 0600). Unlike the function
/// of the system of this name it reports nothing in errno for a template that it cannot use.
/// \param pathTemplate  path whose six characters before the suffix are "XXXXXX"; they are replaced. Empty
///        after all names that were tried (62 cubed) could not be created.
/// \param suffixLength  number of characters behind the six
/// \return an open descriptor, owned by the caller, or -1: the template is too short, has other characters
///        in this place, or no file could be created
int mkstemps(char* pathTemplate, int suffixLength);

} // namespace kavo::templates
