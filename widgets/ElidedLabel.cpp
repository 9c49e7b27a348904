#include "ElidedLabel.h"

#include <QAccessibleWidget>
#include <QApplication>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QHelpEvent>
#include <QMenu>
#include <QPainter>
#include <QStyle>
#include <QToolTip>

using namespace Qt::StringLiterals;

namespace {

constexpr int paperMargin = 8;

/// As much of a text as anybody reads: a file may hold one of millions of characters, and to lay
/// out so many, or to send them to a screen reader, would hold the window up for seconds.
QString excerpt(const QString &text)
{
    constexpr qsizetype side = 2000;
    if (text.size() <= 2 * side)
        return text;
    // No character is cut in two.
    const qsizetype first = side - (text[side - 1].isHighSurrogate() ? 1 : 0);
    const qsizetype last = side - (text[text.size() - side].isLowSurrogate() ? 1 : 0);
    return text.first(first) + u'…' + text.last(last);
}

class AccessibleText : public QAccessibleWidget
{
public:
    explicit AccessibleText(ElidedLabel *label) : QAccessibleWidget(label, QAccessible::StaticText)
    {
    }

    [[nodiscard]] QString text(QAccessible::Text kind) const override
    {
        const QString spoken = excerpt(static_cast<const ElidedLabel *>(object())->spokenText());
        return kind == QAccessible::Name && !spoken.isEmpty() ? spoken
                                                              : QAccessibleWidget::text(kind);
    }

    static QAccessibleInterface *make(const QString &, QObject *object)
    {
        auto *label = qobject_cast<ElidedLabel *>(object);
        return label ? new AccessibleText(label) : nullptr;
    }
};

} // namespace

QString toolTipOf(const QString &text)
{
    return text.isEmpty() ? QString() : u"<p>"_s + text.toHtmlEscaped() + u"</p>"_s;
}

ElidedLabel::ElidedLabel(QWidget *parent) : QLabel(parent)
{
    QAccessible::installFactory(AccessibleText::make); // the first time; then it is there
    setTextFormat(Qt::PlainText);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

QString ElidedLabel::spokenText() const
{
    return showsText() ? text() : m_placeholderText;
}

QSize ElidedLabel::sizeHint() const
{
    // The same whatever the text, so that a text that arrives moves nothing.
    const QMargins margins = contentsMargins();
    return {fontMetrics().averageCharWidth() * 24,
            fontMetrics().height() + margins.top() + margins.bottom() + (m_hasPaper ? 8 : 0)};
}

QSize ElidedLabel::minimumSizeHint() const
{
    const int space = width() - textArea().width();
    int widest = fontMetrics().averageCharWidth() * 8;
    for (const QString &each : {m_placeholderText, m_roomFor})
        widest = qMax(widest, fontMetrics().horizontalAdvance(each) + space);
    return {widest, sizeHint().height()};
}

int ElidedLabel::heightForWidth(int width) const
{
    const int sides = this->width() - textArea().width();
    const int above = sizeHint().height() - fontMetrics().height();
    const QRect lines = fontMetrics().boundingRect(QRect(0, 0, width - sides, QWIDGETSIZE_MAX),
                                                   Qt::TextWordWrap, excerpt(text()));
    return qMax(sizeHint().height(), lines.height() + above);
}

void ElidedLabel::contextMenuEvent(QContextMenuEvent *event)
{
    if (!showsText())
        return;
    auto *menu = new QMenu(this);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    menu->addAction(tr("&Copy"), this, [this] { QApplication::clipboard()->setText(text()); });
    menu->popup(event->globalPos());
}

bool ElidedLabel::event(QEvent *event)
{
    if (event->type() != QEvent::ToolTip)
        return QLabel::event(event);
    const QString shown = excerpt(text());
    const bool isShortened =
        !wordWrap() && fontMetrics().horizontalAdvance(shown) > textArea().width();
    QToolTip::showText(static_cast<QHelpEvent *>(event)->globalPos(),
                       showsText() && isShortened ? toolTipOf(shown) : toolTip(), this);
    return true;
}

QRect ElidedLabel::textArea() const
{
    return m_hasPaper ? contentsRect().adjusted(paperMargin, 0, -paperMargin, 0) : contentsRect();
}

QString ElidedLabel::drawnText() const
{
    QString line = showsText() ? excerpt(text()) : m_placeholderText;
    for (const QChar breaking : {u'\n', u'\r', u'\t'})
        line.replace(breaking, u' ');
    return wordWrap() ? line : fontMetrics().elidedText(line, Qt::ElideMiddle, textArea().width());
}

int ElidedLabel::drawnFlags() const
{
    const Qt::Alignment side = QStyle::visualAlignment(layoutDirection(), alignment());
    return static_cast<int>(side) | (wordWrap() ? Qt::TextWordWrap : 0);
}

QRectF ElidedLabel::ground() const
{
    QRectF text = fontMetrics().boundingRect(textArea(), drawnFlags(), drawnText());
    text.setTop(contentsRect().top());
    text.setBottom(contentsRect().bottom() + 1);
    return text.adjusted(-paperMargin, 0.5, paperMargin, -0.5).intersected(QRectF(rect()));
}

void ElidedLabel::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    if (m_hasPaper && showsText()) {
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(QColor(0, 0, 0, 48));
        painter.setBrush(QColor(252, 252, 252));
        painter.drawRoundedRect(ground().adjusted(0.5, 0, -0.5, 0), 4, 4);
    }
    painter.setLayoutDirection(Qt::LayoutDirectionAuto); // a path reads from its own side
    style()->drawItemText(&painter, textArea(), drawnFlags(), palette(), isEnabled(), drawnText(),
                          showsText() ? foregroundRole() : QPalette::PlaceholderText);
}
