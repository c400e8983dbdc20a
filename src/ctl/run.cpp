// From the options to the command, in the user's language.
#include <algorithm>
#include <array>
#include <cstdlib>
#include <map>

#include "ctl/context.h"
#include "ctl/words.h"
#include "language/language_files.h"
#include "platform/errors.h"
#include "platform/platform.h"

namespace kestrel::ctl {

namespace {

constexpr const char* Ending = ".lng";
/// By the first letters of a locale; everybody else reads English.
constexpr std::array<std::pair<std::string_view, const char*>, 4> Languages{
    {{"it", "Italiano"}, {"de", "Deutsch"}, {"fr", "Francais"}, {"es", "Espanol"}}};

std::string languageOfEnvironment() {
    for (const char* name : {"LC_ALL", "LC_MESSAGES", "LANG"}) {
        const char* const value = std::getenv(name);
        if (!value || !*value) continue;
        const auto found = std::ranges::find(Languages, std::string_view(value).substr(0, 2),
                                             &std::pair<std::string_view, const char*>::first);
        return found == Languages.end() ? "English" : found->second;
    }
    return "English";
}

/// Without its file the texts are the English ones that are built in; a language that was asked for must be there.
void loadLanguage(const Options& options) {
    const bool isAskedFor = !options.language.empty();
    const std::string language = isAskedFor ? options.language : languageOfEnvironment();
    loadWords(language);
    try {
        LoadLanguage(language + Ending);
    } catch (const RunTimeError&) {
        if (isAskedFor) throw;
    }
}

}  // namespace

int runCommand(Context& context) {
    static const std::map<std::string, int (*)(Context&)> commands = {
        {"ports", listPorts}, {"identify", identify}, {"read", read},       {"compare", compare}, {"write", write},
        {"report", report},   {"watch", watch},       {"monitor", monitor}, {"doctor", doctor}};
    if (context.options.json) context.out.useJson();
    try {
        loadLanguage(context.options);
        const int status = commands.at(context.options.command)(context);
        if (!context.out.isLost()) return status;
        throw RunTimeError(error_number::FileAccess, say(Word::OutputLost));
    } catch (const RunTimeError& error) {
        context.out.remark(std::string("kestrelctl: ") + error.what());
        return status::Trouble;
    }
}

}  // namespace kestrel::ctl
