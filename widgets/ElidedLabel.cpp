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

/// What a screen reader reads: what is shown, be it the placeholder.
class AccessibleText : public QAccessibleWidget
{
public:
    explicit AccessibleText(ElidedLabel *label) : QAccessibleWidget(label, QAccessible::StaticText)
    {
    }

    [[nodiscard]] QString text(QAccessible::Text kind) const override
    {
        const auto *label = static_cast<const ElidedLabel *>(object());
        const QString shown = label->text().isEmpty() ? label->placeholderText() : label->text();
        return kind == QAccessible::Name && !shown.isEmpty() ? shown
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

void ElidedLabel::contextMenuEvent(QContextMenuEvent *event)
{
    if (text().isEmpty())
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
    const bool isShortened = fontMetrics().horizontalAdvance(text()) > textArea().width();
    QToolTip::showText(static_cast<QHelpEvent *>(event)->globalPos(),
                       isShortened ? toolTipOf(text()) : QString(), this);
    return true;
}

QRect ElidedLabel::textArea() const
{
    return m_hasPaper ? contentsRect().adjusted(paperMargin, 0, -paperMargin, 0) : contentsRect();
}

void ElidedLabel::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    const QRect area = textArea();
    const bool isEmpty = text().isEmpty();
    if (m_hasPaper && !isEmpty) {
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(QColor(0, 0, 0, 48));
        painter.setBrush(QColor(252, 252, 252));
        painter.drawRoundedRect(QRectF(contentsRect()).adjusted(0.5, 0.5, -0.5, -0.5), 4, 4);
    }
    QString line = isEmpty ? m_placeholderText : text();
    for (const QChar breaking : {u'\n', u'\r', u'\t'})
        line.replace(breaking, u' ');
    const QString shown = fontMetrics().elidedText(line, Qt::ElideMiddle, area.width());
    painter.setLayoutDirection(Qt::LayoutDirectionAuto); // a path reads from its own side
    const Qt::Alignment side = QStyle::visualAlignment(layoutDirection(), alignment());
    style()->drawItemText(&painter, area, static_cast<int>(side), palette(), isEnabled(), shown,
                          isEmpty ? QPalette::PlaceholderText : foregroundRole());
}
