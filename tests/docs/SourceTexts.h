#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace docs_test {

/// A string literal of the sources, neighbours joined, escapes resolved.
struct SourceText {
    std::string file; ///< relative to src/
    std::string text;
};

/// The literals of a source text; comments, includes and raw literals are passed over.
std::vector<std::string> literalsOf(std::string_view source);

/// The literals of everything that can speak to a user: all of src/ but what makes demo data and the controls without a
/// screen.
std::vector<SourceText> sourceTexts();

/// Runs of white space as one blank, none at the ends.
std::string tidy(std::string_view text);

/// The pieces of a text between its places to fill in ("%1", "%s", line ends), tidied; empty ones left out.
std::vector<std::string> fixedPieces(std::string_view text);

/// Whether a piece reads as words for a person: two words or more in lower case, and no SQL, style sheet or the like.
bool readsAsWords(std::string_view piece);

} // namespace docs_test
