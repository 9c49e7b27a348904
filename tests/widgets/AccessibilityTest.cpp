#include "editor/FactLabel.h"
#include "installer/TemplateCard.h"
#include "tests/support/ActionTable.h"
#include "tests/support/Scene.h"
#include "widgets/DropHint.h"
#include "widgets/Spinner.h"

#include <QAccessible>
#include <QLabel>
#include <QMainWindow>
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
    void paintsWhatItSays();

private:
    QStringList m_items;
};

namespace {

/// The visible controls of that kind in a window.
template <class Type>
QList<Type *> visible(const QWidget *window)
{
    auto found = window->findChildren<Type *>();
    found.removeIf([&](Type *each) { return !each->isVisible() || each->window() != window; });
    return found;
}

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

void checkNames(QWidget *window)
{
    for (QWidget *each : visible<QWidget>(window)) {
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

void checkMnemonics(QWidget *window)
{
    QStringList all;
    for (const auto *each : visible<QAbstractButton>(window))
        all << each->text();
    for (const auto *each : visible<QLabel>(window))
        all << (each->buddy() ? each->text() : QString());
    for (const auto *each : visible<QMenuBar>(window))
        all << texts(each->actions());
    QCOMPARE(keysUsedTwice(all), QStringList());
}

void checkTabOrder(QWidget *window, const QString &expected)
{
    QList<QWidget *> chain;
    do {
        chain << QApplication::focusWidget();
        QVERIFY(chain.last());
        QTest::keyClick(chain.last(), Qt::Key_Tab);
    } while (!chain.contains(QApplication::focusWidget()));
    // Of exclusive buttons the chosen one stands for all: the arrow keys go on.
    for (const auto *each : visible<QWidget>(window)) {
        if (each->isEnabled() && (each->focusPolicy() & Qt::TabFocus) != 0)
            QVERIFY2(chain.contains(each), qPrintable(each->objectName()));
    }
    QStringList names;
    for (const QWidget *each : chain)
        names << (each->objectName().isEmpty() ? each->property("text").toString().remove(u'&')
                                               : each->objectName());
    if (!expected.isEmpty()) {
        const auto first = qMax(0, names.indexOf(expected.section(u' ', 0, 0)));
        std::rotate(names.begin(), names.begin() + first, names.end());
        QCOMPARE(names.join(u' '), expected);
    }
}

/// In a large font and at its smallest size, a window has room for each button and each text.
void checkRoom(QWidget *window)
{
    window->resize(1, 1);
    for (const auto *each : visible<QWidget>(window)) {
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
    for (const QString &heading : {u"display"_s, u"installHintTitle"_s, u"emptyHistoryHeading"_s}) {
        const auto *label = window->findChild<QLabel *>(heading);
        if (label && label->isVisible())
            QVERIFY(label->fontMetrics().height() > window->fontMetrics().height());
    }
    // Other names may be shortened, but not what says where the template goes or what is missing;
    // and they do not keep a window wide.
    for (const QString &text : {u"cardPlace"_s, u"theLastPathComponent"_s}) {
        const auto *label = window->findChild<QLabel *>(text);
        if (label && label->isVisible())
            QVERIFY(label->width() >= label->fontMetrics().horizontalAdvance(label->text()));
    }
    QVERIFY(window->width() < 110 * window->fontMetrics().averageCharWidth());
}

/// Counts how often it is painted.
template <class Control>
class Painted : public Control
{
public:
    int m_times = 0;

protected:
    void paintEvent(QPaintEvent *event) override
    {
        ++m_times;
        Control::paintEvent(event);
    }
};

} // namespace

void AccessibilityTest::servesEveryone_data()
{
    m_items = addActionRows(u"widgets/Windows.table"_s);
}

/// In a large font; the main window also in a larger one that comes while it is open.
void AccessibilityTest::servesEveryone()
{
    QFETCH(const QString, start);
    QFETCH(const QString, action);
    QFETCH(const QString, changes);
    const QFont usual = QApplication::font();
    const auto restore = qScopeGuard([&] { QApplication::setFont(usual); });
    QFont font = usual;
    font.setPointSize(16);
    QApplication::setFont(font);
    Scene scene(m_items);
    scene.perform(start);
    auto *window = scene.program().find<QWidget>(action);
    window->activateWindow();
    QTRY_COMPARE(QApplication::activeWindow(), window);
    checkNames(window);
    checkMnemonics(window);
    checkTabOrder(window, changes.trimmed());
    checkRoom(window);
    if (!qobject_cast<QMainWindow *>(window))
        return;
    font.setPointSize(28);
    QApplication::setFont(font);
    QCoreApplication::processEvents();
    checkRoom(window);
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

/// A fact looks one way for each thing that it says, and so does a place to drop something.
void AccessibilityTest::paintsWhatItSays()
{
    FactLabel fact;
    Painted<DropHint> hint;
    const auto picture = [](QWidget &widget) {
        widget.resize(400, 200);
        return widget.grab().toImage();
    };
    QList<QImage> facts = {picture(fact)};
    fact.setText(u"300"_s);
    QCOMPARE(picture(fact), facts.constFirst()); // a dash, until it is of the file
    fact.setValue(u"300"_s);
    facts << picture(fact);
    fact.setStanding(FactLabel::Standing::Earlier);
    facts << picture(fact);
    fact.tint();
    facts << picture(fact);
    fact.setStanding(FactLabel::Standing::Present);
    QCOMPARE(picture(fact), facts.at(1)); // what has changed is of the file before
    fact.setValue(u"3\n00"_s);
    facts << picture(fact);
    fact.setValue(u"3 00"_s);
    QCOMPARE(picture(fact), facts.takeLast());
    fact.setValue(QString(16'000'000, u'x'));
    QElapsedTimer timer;
    timer.start();
    facts << picture(fact); // no longer than what is seen of it
    QVERIFY(timer.elapsed() < 5000);
    QVERIFY(QAccessible::queryAccessibleInterface(&fact)->text(QAccessible::Name).size() < 5000);
    QList<QImage> hints = {picture(hint)};
    hint.setFilled(true);
    hints << picture(hint);
    hint.setHighlighted(true);
    hints << picture(hint);
    hint.show();
    for (const auto set : {&DropHint::setFilled, &DropHint::setHighlighted}) {
        QVERIFY(QTest::qWaitForWindowExposed(&hint));
        QCoreApplication::processEvents();
        const int times = hint.m_times;
        (hint.*set)(false);
        QTRY_VERIFY(hint.m_times > times);
    }
    Painted<Spinner> spinner;
    spinner.show();
    spinner.startAnimation();
    QTRY_VERIFY(spinner.m_times > 4); // it turns
    TemplateCard card;
    const auto frame = [](const QImage &image) { return image.copy(0, 0, image.width(), 4); };
    QCOMPARE(frame(picture(card)), frame(hints.at(0)));
    card.showTemplate({});
    QCOMPARE(frame(picture(card)), frame(hints.at(1)));
    for (const QList<QImage> &pictures : {facts, hints}) {
        for (const QImage &each : pictures)
            QCOMPARE(pictures.count(each), 1);
    }
}

QTEST_MAIN(AccessibilityTest)

#include "AccessibilityTest.moc"
