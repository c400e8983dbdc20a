// A user who does anything at all, at random but by a seed: clicks, drags, keys, menus, pages, languages, sizes.
// The program's own way out is barred to him; he is there until his time is over.
#pragma once

#include <QObject>
#include <random>

class QWidget;

namespace kestrel::qt::testing {

class Monkey : public QObject {
  public:
    Monkey(QWidget& window, unsigned seed, int seconds);

  private:
    int number(int low, int high) { return std::uniform_int_distribution(low, high)(random_); }
    template <class List>
    auto& anyOf(const List& list) {
        return list[static_cast<typename List::size_type>(number(0, static_cast<int>(list.size()) - 1))];
    }
    /// The next act waits by itself: boxes and menus have event loops of their own, in which he goes on.
    void actSoon();
    void act();
    /// Where he would point: a widget that can be seen, of the box or the menu that stands in front if there is one.
    QWidget* target();
    void clickOrDrag();
    void press();
    void type();
    void turnTheWheel();
    void choose();
    void resize();

    QWidget& window_;
    std::mt19937 random_;
    long acts_ = 0;
};

}  // namespace kestrel::qt::testing
