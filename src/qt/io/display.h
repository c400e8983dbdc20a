// The display that windows are shown on, and the loop that brings its events.
// Without a display the toolkit would abort the process with a page of words.
#pragma once

namespace kestrel::qt {

/// Says on standard error what is missing and returns false when windows cannot be shown. Where there is no display and
/// none is needed, windows are drawn in memory from here on.
bool prepareDisplay(bool isNeeded);

/// Before the application is made: its events then come straight from the system and not through another library's
/// loop, which costs less at each byte on the line.
void chooseEventLoop();

/// From here to the end of its life a fatal message of the toolkit is one line and exit status 1. Its warnings, which
/// are for developers, are not printed.
class FatalMessagesInOneLine {
  public:
    FatalMessagesInOneLine();
    ~FatalMessagesInOneLine();
    FatalMessagesInOneLine(const FatalMessagesInOneLine&) = delete;
    FatalMessagesInOneLine& operator=(const FatalMessagesInOneLine&) = delete;
};

}  // namespace kestrel::qt
