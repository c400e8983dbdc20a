// The board program as a child process.
#include "board_process.h"

#include <gtest/gtest.h>

#include <QRegularExpression>
#include <QTest>
#include <algorithm>

namespace kestrel::testing {

namespace {
constexpr int AnswerWithin = 10'000;
}

BoardProcess::BoardProcess(const std::filesystem::path& installation, const QStringList& more, const char* link)
    : link_((installation / link).string()) {
    const QString directory = QString::fromStdString(installation.string());
    QObject::connect(&process_, &QProcess::readyReadStandardOutput, &process_, [this] { read(); });
    process_.start(QStringLiteral(KESTREL_INSTALLATION "/kestrel-board"),
                   QStringList{QStringLiteral("--still"), QStringLiteral("--directory"), directory,
                               QStringLiteral("--link"), QString::fromStdString(link_)} +
                       more);
    const bool isUp = QTest::qWaitFor([this] { return !lines_.isEmpty(); }, AnswerWithin);
    EXPECT_TRUE(isUp) << "the board program does not start: " << process_.errorString().toStdString();
}

BoardProcess::~BoardProcess() {
    process_.write("quit\n");
    process_.waitForFinished(AnswerWithin);
}

void BoardProcess::tell(const char* command) {
    process_.write(command);
    process_.write("\n");
    process_.waitForBytesWritten(AnswerWithin);
}

QStringList BoardProcess::exchanges(const QStringList& words) const {
    QStringList found;
    for (const QString& line : lines_) {
        const QStringList present = line.split(u' ', Qt::SkipEmptyParts);
        const bool all = std::all_of(words.begin(), words.end(), [&](const QString& w) { return present.contains(w); });
        if (line.contains(QLatin1String("->")) && all) found += line;
    }
    return found;
}

QStringList BoardProcess::writes() const {
    QStringList found;
    for (const QString& line : exchanges({QStringLiteral("write")})) {
        const QString heard = line.left(line.indexOf(u'[')).remove(u'=').simplified();
        found += heard.section(u' ', 1).remove(QStringLiteral("write "));
    }
    return found;
}

std::optional<int> BoardProcess::value(int board, int parameter) {
    const QString wanted = QStringLiteral("%1 %2 ").arg(board).arg(parameter);
    const auto answers = [&] { return lines_.filter(QRegularExpression(u'^' + wanted)); };
    const qsizetype before = answers().size();
    tell(qPrintable(u"get "_qs + wanted.trimmed()));
    if (!QTest::qWaitFor([&] { return answers().size() > before; }, AnswerWithin)) return std::nullopt;
    return answers().last().mid(wanted.size()).toInt();
}

void BoardProcess::read() {
    rest_ += process_.readAllStandardOutput();
    for (qsizetype end = rest_.indexOf('\n'); end >= 0; end = rest_.indexOf('\n')) {
        lines_ += QString::fromUtf8(rest_.left(end));
        rest_.remove(0, end + 1);
    }
}

}  // namespace kestrel::testing
