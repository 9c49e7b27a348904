#include "tests/support/RunningProgram.h"
#include "tests/support/TestHome.h"

#include <QAccessible>
#include <QLabel>
#include <QMenuBar>

using namespace Qt::StringLiterals;

/// Every window of the program, held against what a user without a mouse or without sight needs.
class AccessibilityTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void servesEveryone_data();
    void servesEveryone();
    void keepsPlaceholdersLegible();
};

namespace {

/// The row's window in front, with something loaded on both sides and nothing hidden that can be
/// seen at some time.
class ShownWindow : public TestHome, public RunningProgram
{
public:
    ShownWindow()
    {
        QFETCH(QString, window);
        QFETCH(int, mode);
        dropFiles(u"installHint"_s, {makeFolder(u"Glow"_s)});
        chooseMode(1);
        dropFiles(u"editHint"_s, {makeFile(u"Intro.motn"_s, "<frameRate>25</frameRate>")});
        chooseMode(mode);
        if (!QTest::qWaitFor([&] { return isShown(u"libraryButton"_s); }))
            qFatal("the card does not miss the library");
        find<QWidget>(u"renameButton"_s)->setEnabled(true);
        if (window == u"helpWindow")
            find<QAction>(u"runHelpBook"_s)->trigger(); // it is made when it is first opened
        widget = find<QWidget>(window);
        widget->show();
        for (const QString &each : {u"theBackupButton"_s, u"mCancel"_s, u"existsTextField"_s})
            find<QWidget>(each)->show();
        widget->activateWindow();
        if (!QTest::qWaitFor([&] { return QApplication::activeWindow() == widget; }))
            qFatal("%s did not come to the front", qUtf8Printable(window));
    }

    /// The visible controls of that kind in the window.
    template <class Type>
    [[nodiscard]] QList<Type *> all() const
    {
        auto found = widget->findChildren<Type *>();
        found.removeIf([&](Type *each) { return !each->isVisible() || each->window() != widget; });
        return found;
    }

    QWidget *widget = nullptr;
};

QStringList keysUsedTwice(const QStringList &texts)
{
    QStringList keys;
    for (const QString &text : texts)
        keys << QKeySequence::mnemonic(text).toString();
    keys.removeAll(QString());
    for (const QString &each : QStringList(QSet<QString>(keys.begin(), keys.end()).values()))
        keys.removeOne(each);
    return keys;
}

QStringList texts(const QList<QAction *> &items)
{
    QStringList found;
    for (const QAction *each : items)
        found << each->text();
    return found;
}

void checkNames(const ShownWindow &shown)
{
    for (QWidget *each : shown.all<QWidget>()) {
        const auto *label = qobject_cast<QLabel *>(each);
        const bool isControl = each->focusPolicy() != Qt::NoFocus || each->inherits("QProgressBar");
        const bool isText =
            label && !label->text().isEmpty() && label->textFormat() != Qt::RichText;
        QAccessibleInterface *accessible = QAccessible::queryAccessibleInterface(each);
        const QString name = accessible ? accessible->text(QAccessible::Name) : QString();
        if (accessible)
            QVERIFY(!accessible->text(QAccessible::Description).contains(u'<'));
        if (isText)
            QCOMPARE(name, QString(label->text()).remove(u'&'));
        else if (isControl && !(label && label->text().isEmpty()))
            QVERIFY2(!name.isEmpty(), qPrintable(each->objectName()));
    }
}

void checkMnemonics(const ShownWindow &shown)
{
    QStringList all;
    for (const auto *each : shown.all<QAbstractButton>())
        all << each->text();
    for (const auto *each : shown.all<QLabel>())
        all << (each->buddy() ? each->text() : QString());
    for (const auto *each : shown.all<QMenuBar>())
        all << texts(each->actions());
    QCOMPARE(keysUsedTwice(all), QStringList());
}

void checkTabOrder(const ShownWindow &shown, const QString &expected)
{
    QList<QWidget *> chain;
    do {
        chain << QApplication::focusWidget();
        QVERIFY(chain.last());
        QTest::keyClick(chain.last(), Qt::Key_Tab);
    } while (!chain.contains(QApplication::focusWidget()));
    // Of exclusive buttons the chosen one stands for all: the arrow keys go on.
    for (const auto *each : shown.all<QWidget>()) {
        if (each->isEnabled() && (each->focusPolicy() & Qt::TabFocus) != 0)
            QVERIFY2(chain.contains(each), qPrintable(each->objectName()));
    }
    QStringList names;
    for (const QWidget *each : chain)
        names << each->objectName();
    if (!expected.isEmpty()) {
        const auto first = names.indexOf(expected.section(u' ', 0, 0));
        std::rotate(names.begin(), names.begin() + first, names.end());
        QCOMPARE(names.join(u' '), expected);
    }
}

/// In a large font and at its smallest size, a window has room for each button and each text.
void checkRoom(const ShownWindow &shown)
{
    shown.widget->resize(1, 1);
    for (const auto *each : shown.all<QWidget>()) {
        const auto *label = qobject_cast<const QLabel *>(each);
        if (!label && !qobject_cast<const QAbstractButton *>(each))
            continue; // it scrolls, or is thin on purpose
        const auto isWhole = [&] {
            const QSize needed = label && label->wordWrap()
                                     ? QSize(0, label->heightForWidth(label->width()))
                                     : each->minimumSizeHint();
            return each->size() == each->size().expandedTo(needed);
        };
        QVERIFY2(QTest::qWaitFor(isWhole, 1000), qPrintable(each->objectName()));
    }
    // Other names may be shortened, but not the one that says where the template goes.
    if (const auto *place = shown.find<QLabel>(u"cardPlace"_s); place->isVisible())
        QVERIFY(place->width() >= place->fontMetrics().horizontalAdvance(place->text()));
}

} // namespace

void AccessibilityTest::servesEveryone_data()
{
    QTest::addColumn<QString>("window");
    QTest::addColumn<int>("mode");
    QTest::addColumn<QString>("tabOrder"); // empty: any
    // The choice of the mode comes first, and has no name.
    QTest::newRow("Install") << u"mWindow"_s << 0
                             << u" addButton libraryButton input compositionsChoice "
                                "openCompositionsFolder openEffectsFolder openGeneratorsFolder "
                                "openTitlesFolder openTransitionsFolder clearButton mNewCatButton "
                                "mSendButton openTemplatesRootFolder openArchivesFolder "
                                "openLogsWindow runPrefsWindow openHelpSheet"_s;
    QTest::newRow("Edit") << u"mWindow"_s << 1
                          << u" renameButton element setButton frPopup conformButton orgButton "
                             "tClearButton openTemplatesRootFolder openArchivesFolder "
                             "openLogsWindow runPrefsWindow openHelpSheet"_s;
    QTest::newRow("renameSheet")
        << u"renameSheet"_s << 1
        << u"newTempplateName clearRenameTextField cancelRenameTemplate renameTemplate"_s;
    for (const char *name : {"catSheet", "confirmSheet", "logWindow", "logSheet", "prefWindow",
                             "theSheet", "helpWindow"})
        QTest::newRow(name) << QString::fromLatin1(name) << 1 << QString();
}

void AccessibilityTest::servesEveryone()
{
    QFETCH(const QString, tabOrder);
    const QFont usual = QApplication::font();
    const auto restore = qScopeGuard([&] { QApplication::setFont(usual); });
    QFont font = usual;
    font.setPointSize(16);
    QApplication::setFont(font);
    const ShownWindow shown;
    checkNames(shown);
    checkMnemonics(shown);
    checkTabOrder(shown, tabOrder);
    for (const QString &button : {u"orgButton"_s, u"renameTemplate"_s})
        shown.click(button); // which show more
    checkRoom(shown);
    if (QLatin1StringView(QTest::currentDataTag()) != "Edit"_L1)
        return;
    // The Edit side keeps up with a desktop that changes its font.
    font.setPointSize(28);
    QApplication::setFont(font);
    QCoreApplication::processEvents();
    checkRoom(shown);
    QVERIFY(shown.find<QWidget>(u"display"_s)->fontMetrics().height() >
            shown.find<QWidget>(u"theFrames"_s)->fontMetrics().height());
}

/// The desktop changes its colours while the program runs.
void AccessibilityTest::keepsPlaceholdersLegible()
{
    const TestHome home;
    const RunningProgram program;
    const QPalette before = QApplication::palette();
    const auto restore = qScopeGuard([&] { QApplication::setPalette(before); });
    // Of greys, near enough: what is seen through the ground, made linear.
    const auto luminance = [](double grey) { return std::pow(grey, 2.2) + 0.05; };
    for (const auto &[text, ground] : {std::pair(QColor(Qt::black), QColor(Qt::white)),
                                       std::pair(QColor(240, 240, 240), QColor(49, 49, 53)),
                                       std::pair(QColor(90, 90, 90), QColor(250, 250, 250))}) {
        QApplication::setPalette(
            {text, ground, ground, ground, ground, text, text, ground, ground});
        QCoreApplication::processEvents();
        const QColor shown =
            program.find<QWidget>(u"input"_s)->palette().color(QPalette::PlaceholderText);
        const double seen = shown.redF() * shown.alphaF() + ground.redF() * (1 - shown.alphaF());
        const double contrast = luminance(seen) / luminance(ground.redF());
        QVERIFY2(std::max(contrast, 1 / contrast) >= 4.4, qPrintable(QString::number(contrast)));
    }
}

QTEST_MAIN(AccessibilityTest)

#include "AccessibilityTest.moc"
