// A client of the accessibility bus that asks anything of anything, at random, as far as the bus lets it through:
// what it holds may be gone, and its numbers need not be in range.
#pragma once

#include <QAccessible>
#include <random>
#include <vector>

namespace kestrel::qt::testing {

class AccessibleClient {
  public:
    AccessibleClient(QObject& window, unsigned seed);

    /// One query or act, on something that it has seen.
    void askAnything();
    long answered() const { return answered_; }

  private:
    int number(int low, int high) { return std::uniform_int_distribution(low, high)(random_); }
    /// Mostly in range, at times just outside of it or far away.
    int index(int count);
    QString anyText();
    void keep(const QAccessibleInterface* found);
    void askOfTree(QAccessibleInterface& asked);
    void askOfItself(const QAccessibleInterface& asked);
    void askOfText(QAccessibleTextInterface& asked);
    void edit(QAccessibleEditableTextInterface& asked);
    void askOfValue(QAccessibleValueInterface& asked);
    void act(QAccessibleActionInterface& asked);
    void askOfTable(QAccessibleTableInterface& asked);
    void askOfCell(const QAccessibleTableCellInterface& asked);

    std::mt19937 random_;
    QObject& window_;
    std::vector<QAccessible::Id> known_;
    long answered_ = 0;
};

}  // namespace kestrel::qt::testing
