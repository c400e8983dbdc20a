// Turns a page's layout tree into widgets.
// A page scrolls when its window is smaller than it.
#pragma once

#include <QWidget>

#include "platform/window.h"

namespace kestrel::qt {

/// The widget of a page, with views bound to all its controls. The window's models must outlive it or dismissPage() be
/// called before they go. Run-time errors of the page's Arrange() pass through.
QWidget* buildPage(Window& window);

/// Shows how far the page is with its first values, and whether they are old.
void showPageHead(QWidget* page, const Window& window);

/// The user closes the page: what is typed and not entered is dropped.
/// To be called before the page is told to close.
void dropTyping(QWidget* page);

/// Lays the page out at once for the texts that it has now.
void layOut(QWidget* page);

/// Lets go of the page's models, which may be destroyed from now on. To be called before the page leaves its frame:
/// a view that loses the focus on the way must tell nothing any more.
void releaseModels(QWidget* page);

/// Lets go of the page's models and deletes the widget: not inside an event of a widget of the page's own.
void dismissPage(QWidget* page);

}  // namespace kestrel::qt
