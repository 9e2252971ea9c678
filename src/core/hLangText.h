#pragma once
// The language pick and the filling of numbered placeholders for every text
// the dialogs show. Kept free of toolkit types so that any layer can use it.

#include <string>
#include <vector>

namespace fw {

/// German text if the host's language id is 7, else the English text, with
/// numbered placeholders filled from values.
///
/// values[k] replaces every "{i}" with i = lowerBound + k, step by step in
/// index order, so a value that holds "{2}" is itself filled by a later step.
/// A placeholder without a value stays as it is; no values leave the text unchanged.
/// A host that cannot tell its language gets the English text.
std::string hLangText(const std::string& german, const std::string& english,
                      const std::vector<std::string>& values = {}, int lowerBound = 0);

} // namespace fw
