// Reads the glossary and holds the texts to it.
// Texts and terms are compared as bytes of the code page in small letters, where a letter is one byte.
#include "tools/mklang_glossary.h"

#include <algorithm>
#include <string_view>
#include <utility>

#include "platform/code_page.h"

namespace kestrel::mklang {

namespace {

using Forms = std::vector<std::string>;

struct Term {
    int line;  // of the glossary
    std::string name;
    std::vector<Forms> forms;  // of each language
    bool met = false;
};

// A form of the first language.
struct Key {
    std::string form;
    Term* term;
};

bool isCapital(unsigned char c) { return (c >= 'A' && c <= 'Z') || (c >= 0xC0 && c <= 0xDE && c != 0xD7); }

std::string lowered(std::string_view text) {
    std::string bytes = bytesForInstallation(text).value_or("");
    for (char& c : bytes)
        if (isCapital(static_cast<unsigned char>(c))) c = static_cast<char>(c + ('a' - 'A'));
    return bytes;
}

// Of lowered text.
bool belongsToAWord(char c) {
    return (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') || static_cast<unsigned char>(c) >= 0xDF;
}

std::string trimmed(std::string_view text) {
    const auto from = text.find_first_not_of(' ');
    return from == std::string_view::npos ? "" : std::string(text.substr(from, text.find_last_not_of(' ') + 1 - from));
}

std::vector<std::string> split(std::string_view text, char separator) {
    std::vector<std::string> parts;
    for (std::size_t from = 0, end = 0; from <= text.size(); from = end + 1) {
        end = std::min(text.find(separator, from), text.size());
        parts.push_back(trimmed(text.substr(from, end - from)));
    }
    return parts;
}

Forms formsOf(std::string cell) {
    const auto bracket = cell.find('(');
    if (bracket != std::string::npos) cell.erase(bracket, cell.find(')', bracket) - bracket + 1);
    Forms forms = split(lowered(cell), ',');
    std::erase(forms, "");
    return forms;
}

// The rows of the table but its head, which is two lines.
std::vector<Term> readTerms(std::istream& in, const std::string& name, std::size_t languages,
                            std::vector<Complaint>& complaints) {
    constexpr int HeadLines = 2;
    std::vector<Term> terms;
    int tableLine = 0;
    int lineNumber = 0;
    for (std::string line; std::getline(in, line);) {
        ++lineNumber;
        line = trimmed(line);
        if (!line.starts_with('|') || ++tableLine <= HeadLines) continue;
        const auto cells = split(std::string_view(line).substr(1, line.find_last_of('|') - 1), '|');
        Term term{lineNumber, cells.front(), {}};
        if (cells.size() != languages + 2) {
            complaints.push_back({name, lineNumber, "the row must have a term, each language and the meaning"});
            continue;
        }
        for (std::size_t i = 0; i < languages; ++i) term.forms.push_back(formsOf(cells[i + 1]));
        terms.push_back(std::move(term));
    }
    return terms;
}

// Where the form stands in the text as whole words.
std::size_t findWords(const std::string& text, const std::string& form) {
    for (auto at = text.find(form); at != std::string::npos; at = text.find(form, at + 1)) {
        const auto end = at + form.size();
        const bool begins = at == 0 || !belongsToAWord(text[at - 1]) || !belongsToAWord(form.front());
        const bool ends = end == text.size() || !belongsToAWord(text[end]) || !belongsToAWord(form.back());
        if (begins && ends) return at;
    }
    return std::string::npos;
}

// The longest first, so that each takes its letters from the shorter ones that it holds.
std::vector<Key> keysOf(std::vector<Term>& terms) {
    std::vector<Key> keys;
    for (Term& term : terms)
        for (const std::string& form : term.forms.front()) keys.push_back({form, &term});
    std::stable_sort(keys.begin(), keys.end(),
                     [](const Key& a, const Key& b) { return a.form.size() > b.form.size(); });
    return keys;
}

std::vector<Term*> termsIn(std::string text, const std::vector<Key>& keys) {
    constexpr char Taken = '\n';
    std::vector<Term*> found;
    for (const auto& [form, term] : keys) {
        const auto at = findWords(text, form);
        if (at == std::string::npos) continue;
        text.replace(at, form.size(), form.size(), Taken);
        found.push_back(term);
    }
    return found;
}

}  // namespace

void checkGlossary(std::istream& in, const std::string& name, const LanguageTexts& texts,
                   std::vector<Complaint>& complaints) {
    std::vector<Term> terms = readTerms(in, name, texts.languages.size(), complaints);
    const std::vector<Key> keys = keysOf(terms);
    for (const auto& [number, row] : texts.rows) {
        if (row.front().starts_with(sectionMark)) continue;
        for (Term* term : termsIn(lowered(row.front()), keys)) {
            term->met = true;
            for (std::size_t i = 1; i < row.size(); ++i) {
                const std::string text = lowered(row[i]);
                const auto isThere = [&text](const auto& form) { return text.find(form) != std::string::npos; };
                if (std::any_of(term->forms[i].begin(), term->forms[i].end(), isThere)) continue;
                complaints.push_back({texts.places.at(number), 0,
                                      "\"" + row[i] + "\" lacks the word for " + term->name + " in " +
                                          texts.languages[i] + " (" + name + ":" + std::to_string(term->line) + ")"});
            }
        }
    }
    for (const Term& term : terms)
        if (!term.met && !term.forms.front().empty())
            complaints.push_back({name, term.line, "no text has the term " + term.name});
}

}  // namespace kestrel::mklang
