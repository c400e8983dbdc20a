// The manual: F1 leads to what the page in front is for, in the language of the pages.
// It is the built one, whose sections and pictures the menu is held against.
#include "qt/window/manual.h"

#include <QImage>
#include <QTextBlock>
#include <QTextBrowser>

#include "screen_fixture.h"

namespace kestrel::qt::testing {
namespace {

class Manual : public ScreenTest {
  protected:
    QTextBrowser& browser() { return *platform.view->findChild<QTextBrowser*>(); }
    /// The heading at the upper edge.
    std::string headingInSight() {
        const QTextBlock block = browser().cursorForPosition(QPoint(20, 14)).block();
        return block.blockFormat().headingLevel() > 0 ? block.text().toStdString() : "";
    }
    int picturesToBeSeen() {
        int seen = 0;
        for (QTextBlock block = browser().document()->begin(); block.isValid(); block = block.next())
            for (auto part = block.begin(); !part.atEnd(); ++part) {
                const QTextImageFormat picture = part.fragment().charFormat().toImageFormat();
                if (!picture.isValid()) continue;
                seen +=
                    browser().loadResource(QTextDocument::ImageResource, QUrl(picture.name())).value<QImage>().isNull()
                        ? 0
                        : 1;
            }
        return seen;
    }
};

TEST_F(Manual, HasASectionForEveryPageInEveryLanguageThatItIsIn) {
    EXPECT_FALSE(showManual(*platform.view, QStringLiteral("FrmDosi"))) << "this installation has none";
    platform.directory = KESTREL_INSTALLATION;
    platform.install(KESTREL_INSTALLATION);
    constexpr std::size_t Sections = 27;  // the four counters of vends share one
    constexpr int Pictures = 6;
    std::set<std::string> titles;
    for (const int language : {0, 1, 3, 4}) {  // German, English, French, which has none of its own, Italian
        choose(language);
        std::set<std::string> headings;
        for (const MenuRow& row : rows()) {
            ASSERT_TRUE(showManual(*platform.view, QString::fromLatin1(row.page)));
            settle();
            EXPECT_FALSE(headingInSight().empty()) << row.page;
            headings.insert(headingInSight());
        }
        EXPECT_EQ(headings.size(), Sections);
        EXPECT_EQ(picturesToBeSeen(), Pictures);
        showManual(*platform.view, QStringLiteral("FrmUnknown"));
        settle();
        titles.insert(headingInSight());
    }
    EXPECT_EQ(titles.size(), 3U);
}

}  // namespace
}  // namespace kestrel::qt::testing
