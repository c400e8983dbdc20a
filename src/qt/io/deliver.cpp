// The end of a run by trouble that nothing below has handled.
#include "qt/io/deliver.h"

#include <string>

#include "platform/errors.h"
#include "platform/platform.h"

namespace kestrel::qt {

namespace {

bool ending = false;

Message describe(const std::exception_ptr& trouble) {
    Message message{"", "Run-time error"};
    try {
        std::rethrow_exception(trouble);
    } catch (const RunTimeError& error) {
        message.title += " " + std::to_string(error.number());
        message.text = error.what();
    } catch (const std::exception& error) {
        message.title = "Program error";
        message.text = error.what();
    } catch (...) {
        message.title = "Program error";
        message.text = "Unknown trouble";
    }
    return message;
}

}  // namespace

bool isEnding() { return ending; }

void endByTrouble(const std::exception_ptr& trouble) {
    ending = true;
    ShowMessage(describe(trouble));
    EndProcess(EndedByTrouble);
}

}  // namespace kestrel::qt
