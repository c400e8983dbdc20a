// The glossary: one word for one thing in every language, as a table for people that the texts are held to.
#pragma once

#include <istream>
#include <string>
#include <vector>

#include "tools/mklang_format.h"

namespace kestrel::mklang {

// Reads the glossary, the Markdown table of a paper: a term, a cell for each language of the texts, its meaning. A cell
// is a list of forms parted by commas; what stands in brackets is a remark. A text in the first language that has a
// form of a term as whole words, in small letters or capitals, is complained of for each other language whose text has
// no form of that term, not even inside a word. Of terms that overlap in a text the longer one counts. Complains too of
// a term that no text has, or that a language lacks.
void checkGlossary(std::istream& in, const std::string& name, const LanguageTexts& texts,
                   std::vector<Complaint>& complaints);

}  // namespace kestrel::mklang
