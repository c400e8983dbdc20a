// The manual of the installation.
#include "qt/window/manual.h"

#include <QAbstractTextDocumentLayout>
#include <QDialog>
#include <QFile>
#include <QImage>
#include <QScreen>
#include <QScrollBar>
#include <QTextBlock>
#include <QTextBrowser>
#include <QVBoxLayout>

#include "platform/platform.h"
#include "qt/io/text.h"
#include "shell/configuration.h"

namespace kestrel::qt {

namespace {

constexpr const char* WindowName = "manual";
constexpr QSize Preferred{860, 680};
constexpr int WidestPicture = 800;

/// The file in the language of the pages, else the English one; empty where there is neither.
QString manualFile() {
    for (const std::string& language : {ActiveLanguage(), std::string("English")}) {
        const auto file = platform().programDirectory() / "manual" / (language + ".md");
        if (!language.empty() && isText(file) && QFile::exists(pathToQt(file))) return pathToQt(file);
    }
    return {};
}

/// How many headings stand before the mark; the one behind it is that of the section. Below 0: there is no such mark.
int headingsBefore(const QString& file, const QString& section) {
    QFile source(file);
    if (!source.open(QIODevice::ReadOnly)) return -1;
    const QString mark = QStringLiteral("<a id=\"%1\"></a>").arg(section);
    int headings = 0;
    for (const QString& line : QString::fromUtf8(source.readAll()).split(u'\n')) {
        if (line == mark) return headings;
        if (line.startsWith(u'#')) ++headings;
    }
    return -1;
}

QTextBlock headingOf(const QTextDocument& document, int number) {
    for (QTextBlock block = document.begin(); block.isValid(); block = block.next())
        if (block.blockFormat().headingLevel() > 0 && number-- == 0) return block;
    return {};
}

/// Pictures of whole pages are wider than the window.
class Browser : public QTextBrowser {
  public:
    QVariant loadResource(int type, const QUrl& name) override {
        QVariant content = QTextBrowser::loadResource(type, name);
        if (type != QTextDocument::ImageResource) return content;
        const QImage image = QImage::fromData(content.toByteArray());
        if (image.width() <= WidestPicture) return image;
        return image.scaledToWidth(WidestPicture, Qt::SmoothTransformation);
    }
};

/// The links within the manual lead to marks, which the toolkit does not know.
class ManualWindow : public QDialog {
  public:
    explicit ManualWindow(QWidget* parent) : QDialog(parent) {
        setObjectName(QLatin1String(WindowName));
        setAttribute(Qt::WA_DeleteOnClose);
        auto* layout = new QVBoxLayout(this);
        layout->setContentsMargins(0, 0, 0, 0);
        layout->addWidget(&browser_);
        browser_.setOpenLinks(false);
        connect(&browser_, &QTextBrowser::anchorClicked, this, [this](const QUrl& link) { goTo(link.fragment()); });
        resize(Preferred.boundedTo(screen()->availableSize()));
    }

    void read(const QString& file) {
        if (file == file_) return;
        file_ = file;
        browser_.setSource(QUrl::fromLocalFile(file), QTextDocument::MarkdownResource);
        setWindowTitle(browser_.document()->firstBlock().text());
    }
    void goTo(const QString& section) {
        const QTextDocument& document = *browser_.document();
        const QTextBlock heading = headingOf(document, headingsBefore(file_, section));
        const double top = heading.isValid() ? document.documentLayout()->blockBoundingRect(heading).top() : 0;
        browser_.verticalScrollBar()->setValue(static_cast<int>(top));
    }

  private:
    Browser browser_;
    QString file_;
};

}  // namespace

bool showManual(QWidget& parent, const QString& section) {
    const QString file = manualFile();
    if (file.isEmpty()) return false;
    auto* window = static_cast<ManualWindow*>(parent.findChild<QDialog*>(QLatin1String(WindowName)));
    if (!window) window = new ManualWindow(&parent);
    window->read(file);
    window->show();
    window->goTo(section);
    window->raise();
    window->activateWindow();
    return true;
}

}  // namespace kestrel::qt
