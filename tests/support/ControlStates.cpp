#include "ControlStates.h"

#include "widgets/DateField.h"
#include "widgets/DropHint.h"
#include "widgets/ProgressAnimation.h"
#include "widgets/SegmentedControl.h"
#include "widgets/Spinner.h"

#include <QAccessible>
#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QFileDialog>
#include <QFocusFrame>
#include <QGraphicsEffect>
#include <QIcon>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QStackedWidget>
#include <QTableView>
#include <QVariantAnimation>

using namespace Qt::StringLiterals;

namespace {

/// What a change to true and one to false are called; every other kind is told by its value.
const QMap<QString, std::pair<QString, QString>> verbs = {
    {u"enabled"_s, {u"on"_s, u"off"_s}},
    {u"shown"_s, {u"show"_s, u"hide"_s}},
    {u"checked"_s, {u"check"_s, u"uncheck"_s}},
    {u"turning"_s, {u"turn"_s, u"stop"_s}},
    {u"lit"_s, {u"light"_s, u"dim"_s}},
    {u"ring"_s, {u"ring"_s, u"unring"_s}},
    {u"faded"_s, {u"fade"_s, u"unfade"_s}},
    {u"spoken"_s, {u"say"_s, u"unsay"_s}},
    {u"tinted"_s, {u"tint"_s, u"untint"_s}},
    {u"default"_s, {u"default"_s, u"undefault"_s}},
    {u"minimized"_s, {u"minimize"_s, u"restore"_s}}};

/// Menu items that stand for a control: they can be chosen while it can be, at any time.
const QMap<QString, QString> followers = {{u"doOpenItem"_s, u"addButton"_s},
                                          {u"openFileItem"_s, u"oFile"_s},
                                          {u"moveAndCloseItem"_s, u"mSendButton"_s},
                                          {u"createCategoryItem"_s, u"mNewCatButton"_s},
                                          {u"clearInputsItem"_s, u"clearButton"_s},
                                          {u"backupOriginalItem"_s, u"orgButton"_s},
                                          {u"raiseRenameSheetItem"_s, u"renameButton"_s},
                                          {u"clearEditorItem"_s, u"tClearButton"_s},
                                          {u"writeToFileItem"_s, u"tClearButton"_s},
                                          {u"addElementsItem"_s, u"setButton"_s},
                                          {u"conformItem"_s, u"conformButton"_s}};

QString word(bool is)
{
    return is ? u"yes"_s : u"no"_s;
}

bool isOurs(const QObject *object)
{
    const QString name = object->objectName();
    return !name.isEmpty() && !name.startsWith("qt_"_L1);
}

bool isOfCard(const QWidget *control)
{
    const QWidget *parent = control->parentWidget();
    return parent && (parent->objectName() == u"installHint" ||
                      parent->objectName() == u"catForecast" || isOfCard(parent));
}

/// The name of the control, or of that which it is a part of.
QString nameOf(const QObject *object)
{
    while (object && !isOurs(object))
        object = object->parent();
    return object ? object->objectName() : QString();
}

/// The pictures of the kinds of files, as large as that label.
QMap<QString, QImage> kindPictures(const QLabel *label)
{
    QMap<QString, QImage> pictures;
    for (const QString &each :
         {u"mEffect.png"_s, u"mDocument.png"_s, u"mTitle.png"_s, u"mTransition.png"_s})
        pictures.insert(
            each,
            QIcon(u":/"_s + each).pixmap(label->size(), label->devicePixelRatioF()).toImage());
    return pictures;
}

QString pictureName(const QLabel *label)
{
    const QPixmap shown = label->pixmap(Qt::ReturnByValue);
    const QSizeF size = shown.deviceIndependentSize();
    if (label->objectName() == u"statusImage") {
        static const QMap<QString, QImage> pictures =
            kindPictures(label); // their decoding takes long
        return pictures.key(shown.toImage(), u"a picture"_s);
    }
    return size.width() > label->width()  ? u"a picture that does not fit"_s
           : size.width() > size.height() ? u"a wide picture"_s
                                          : u"a picture"_s;
}

QString rows(const QAbstractItemModel *model)
{
    QString lines;
    for (int row = 0; model && row < model->rowCount(); ++row)
        lines += model->index(row, 0).data().toString() + u'|';
    return lines;
}

QString progress(const QProgressBar *bar)
{
    const auto *animation = bar->findChild<ProgressAnimation *>();
    if (animation && animation->isRunning())
        return u"%1% every %2 ms"_s.arg(bar->value())
            .arg(animation->findChild<QTimer *>()->interval());
    return bar->value() > 0 ? u"%1%"_s.arg(100 * bar->value() / bar->maximum()) : QString();
}

QString valueOf(const QWidget *control)
{
    if (const auto *date = qobject_cast<const DateField *>(control))
        return date->text().isEmpty() ? QString() : u"DATE"_s;
    if (const auto *label = qobject_cast<const QLabel *>(control))
        return label->pixmap(Qt::ReturnByValue).isNull() ? label->text() : pictureName(label);
    if (const auto *list = qobject_cast<const QComboBox *>(control))
        return QString::number(list->currentIndex());
    if (const auto *pages = qobject_cast<const QStackedWidget *>(control))
        return QString::number(pages->currentIndex());
    if (const auto *segments = qobject_cast<const SegmentedControl *>(control))
        return QString::number(segments->selectedSegment());
    if (const auto *table = qobject_cast<const QTableView *>(control))
        return rows(table->model());
    if (const auto *bar = qobject_cast<const QProgressBar *>(control))
        return progress(bar);
    return control->isWindow() ? control->windowTitle() : control->property("text").toString();
}

class States : public ControlStates
{
public:
    void add(QWidget *control);
    void addLabel(const QLabel *label);
    void add(const QAction *item);

private:
    void put(const char *kind, const QObject *object, const QString &value)
    {
        insert({QLatin1StringView(kind), object->objectName()}, value);
    }
    void put(const char *kind, const QObject *object, bool is) { put(kind, object, word(is)); }
};

void States::add(QWidget *control)
{
    put("enabled", control, control->isEnabled());
    put("usable", control, control->isVisible() && control->isEnabled());
    put("value", control, valueOf(control));
    put("faded", control, control->graphicsEffect() && !control->isHidden());
    if (control->isWindow()) {
        put("window", control, control->isVisible());
        put("minimized", control, control->isMinimized());
        put("focus", control, nameOf(control->focusWidget()));
    } else if (!qobject_cast<QStackedWidget *>(control->parentWidget())) {
        put("shown", control, !control->isHidden());
    }
    if (control->property("checkable").toBool())
        put("checked", control, control->property("checked").toBool());
    if (const auto *button = qobject_cast<QPushButton *>(control);
        button && !qobject_cast<QDialog *>(control->window())) // where it follows every focus
        put("default", control, button->isDefault());
    if (const auto *spinner = qobject_cast<Spinner *>(control))
        put("turning", control, spinner->isAnimating());
    if (const auto *hint = qobject_cast<DropHint *>(control))
        put("lit", control, hint->isHighlighted());
    if (control->property("focusRing").isValid())
        put("ring", control, control->property("focusRing").toBool());
    if (qobject_cast<QComboBox *>(control)) {
        const auto *mark = control->window()->findChild<QFocusFrame *>();
        put("ring", control, mark && mark->isVisible() && mark->widget() == control);
    }
    if (const auto *label = qobject_cast<QLabel *>(control))
        addLabel(label);
}

void States::addLabel(const QLabel *label)
{
    const bool isQuiet = label->foregroundRole() == QPalette::PlaceholderText;
    put("colour", label,
        isQuiet ? u"quiet"_s : label->palette().color(label->foregroundRole()).name());
    if (!label->inherits("FactLabel"))
        return;
    auto *mutableLabel = const_cast<QLabel *>(label); // NOLINT: the interface only asks
    const QString spoken =
        QAccessible::queryAccessibleInterface(mutableLabel)->text(QAccessible::Name);
    put("spoken", label, spoken == label->text());
    const auto *tint = label->findChild<QVariantAnimation *>();
    put("tinted", label, tint->state() == QAbstractAnimation::Running);
}

void States::add(const QAction *item)
{
    const QString control = followers.value(item->objectName());
    // One that follows is told only when it does not.
    const bool follows =
        !control.isEmpty() && word(item->isEnabled()) == value({u"usable"_s, control}, word(false));
    put("enabled", item, follows || item->isEnabled());
    put("value", item, item->text());
    if (item->isCheckable())
        put("checked", item, item->isChecked());
    put("stray", item, control.isEmpty() || follows ? QString() : item->objectName());
}

} // namespace

ControlStates controlStates(bool withCard)
{
    States states;
    QList<const QAction *> items;
    for (QWidget *each : QApplication::allWidgets()) {
        for (const QAction *item : each->actions())
            items << (isOurs(item) ? item : nullptr);
        if (isOurs(each) && (withCard || !isOfCard(each)) && !each->window()->inherits("QMenu") &&
            !qobject_cast<const QFileDialog *>(each->window()))
            states.add(each);
    }
    items.removeAll(nullptr);
    for (const QAction *item : std::as_const(items))
        states.add(item);
    if (const QWidget *front = QApplication::activeWindow())
        states.insert({u"front"_s, {}}, nameOf(front));
    return states;
}

ControlStates plainStates(ControlStates states)
{
    for (auto item = states.begin(); item != states.end(); ++item) {
        if (const QString &kind = item.key().first; verbs.contains(kind))
            item.value() = word(kind == u"enabled"_s || kind == u"shown"_s);
    }
    return states;
}

QStringList differences(const ControlStates &before, const ControlStates &now)
{
    QStringList changes;
    for (auto item = now.begin(); item != now.end(); ++item) {
        const auto &[kind, name] = item.key();
        const QString &value = item.value();
        // What was built only now has just its windows to tell, and the focus in them.
        const QString missing = kind == u"window"_s  ? word(false)
                                : kind == u"focus"_s ? u""_s
                                                     : value;
        if (kind == u"usable"_s || value == before.value(item.key(), missing))
            continue;
        if (const QString verb = kind == u"window"_s ? u"shown"_s : kind; verbs.contains(verb))
            changes << (value == u"yes" ? verbs[verb].first : verbs[verb].second) + u' ' + name;
        else if (kind == u"focus"_s && value.isEmpty())
            changes << u"unfocus "_s + name;
        else
            changes << (kind == u"value"_s    ? QString(name + u'=')
                        : kind == u"colour"_s ? QString(name + u' ')
                                              : QString(kind + u' ')) +
                           value;
    }
    return changes;
}

bool isVerb(const QString &word)
{
    return std::any_of(verbs.begin(), verbs.end(),
                       [&](const auto &each) { return word == each.first || word == each.second; });
}
