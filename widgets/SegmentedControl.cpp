#include "SegmentedControl.h"

#include <QAbstractButton>
#include <QHBoxLayout>
#include <QPainter>

namespace {

constexpr int horizontalPadding = 22;
constexpr int verticalPadding = 6;
constexpr qreal cornerRadius = 6;

QColor translucent(QColor colour, qreal alpha)
{
    colour.setAlphaF(static_cast<float>(alpha));
    return colour;
}

/// One segment: quiet on the shared track, raised when it is the selected one.
class Segment : public QAbstractButton
{
public:
    using QAbstractButton::QAbstractButton;

    [[nodiscard]] QSize sizeHint() const override
    {
        QFont bold = font();
        bold.setBold(true); // the widest state, so that a selection shifts nothing
        const QFontMetrics metrics(bold);
        return {metrics.horizontalAdvance(text().remove(u'&')) + 2 * horizontalPadding,
                metrics.height() + 2 * verticalPadding};
    }

protected:
    void paintEvent(QPaintEvent *) override
    {
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        const QRectF body = QRectF(rect()).adjusted(2.5, 2.5, -2.5, -2.5);
        const QPalette::ColorGroup group = isEnabled() ? QPalette::Active : QPalette::Disabled;
        if (isChecked() || isDown()) {
            painter.setBrush(
                palette().color(group, isDown() ? QPalette::Midlight : QPalette::Base));
            painter.setPen(translucent(palette().color(group, QPalette::WindowText), 0.25));
            painter.drawRoundedRect(body, cornerRadius - 2, cornerRadius - 2);
        }
        if (hasFocus()) {
            painter.setBrush(Qt::NoBrush);
            painter.setPen(QPen(palette().color(group, QPalette::Highlight), 2));
            painter.drawRoundedRect(body, cornerRadius - 2, cornerRadius - 2);
        }
        QFont face = font();
        face.setBold(isChecked());
        painter.setFont(face);
        painter.setPen(palette().color(group, QPalette::WindowText));
        painter.drawText(rect(), Qt::AlignCenter | Qt::TextShowMnemonic, text());
    }
};

/// The track that the segments lie on.
class Track : public QWidget
{
public:
    using QWidget::QWidget;

protected:
    void paintEvent(QPaintEvent *) override
    {
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setBrush(translucent(palette().color(QPalette::WindowText), 0.08));
        painter.setPen(translucent(palette().color(QPalette::WindowText), 0.15));
        painter.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), cornerRadius,
                                cornerRadius);
    }
};

} // namespace

SegmentedControl::SegmentedControl(QWidget *parent) : QWidget(parent)
{
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    auto *layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    auto *track = new Track(this);
    layout->addWidget(track);
    auto *row = new QHBoxLayout(track);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(0);
}

QStringList SegmentedControl::segments() const
{
    QStringList labels;
    for (const QAbstractButton *each : m_buttons)
        labels << each->text();
    return labels;
}

void SegmentedControl::setSegments(const QStringList &labels)
{
    qDeleteAll(m_buttons);
    m_buttons.clear();
    m_tags.fill(-1, labels.size());
    m_selected = -1;
    QWidget *track = layout()->itemAt(0)->widget();
    for (int segment = 0; segment < labels.size(); ++segment) {
        auto *button = new Segment(track);
        button->setText(labels.at(segment));
        button->setFocusPolicy(Qt::StrongFocus);
        connect(button, &QAbstractButton::clicked, this, [this, segment] {
            m_selected = segment;
            updateChecks();
            Q_EMIT pressed(segment);
        });
        track->layout()->addWidget(button);
        m_buttons << button;
    }
    setMomentary(m_isMomentary);
    setSelectedSegment(m_isMomentary ? -1 : 0);
    takePlaceInTabOrder();
}

/// The segments come where the control stands, though a form orders its controls before it names
/// the segments. Only what takes the focus can be ordered.
void SegmentedControl::takePlaceInTabOrder()
{
    setFocusPolicy(Qt::StrongFocus);
    QWidget *last = this;
    for (QAbstractButton *each : std::as_const(m_buttons))
        setTabOrder(std::exchange(last, each), each);
    setFocusPolicy(Qt::NoFocus);
}

void SegmentedControl::setSelectedSegment(int segment)
{
    if (segment < 0 || segment >= m_buttons.size())
        return;
    m_selected = segment;
    updateChecks();
}

int SegmentedControl::tag(int segment) const
{
    return m_tags.value(segment, -1);
}

void SegmentedControl::setTag(int tag, int segment)
{
    if (segment >= 0 && segment < m_tags.size())
        m_tags[segment] = tag;
}

void SegmentedControl::setMomentary(bool momentary)
{
    m_isMomentary = momentary;
    for (QAbstractButton *each : std::as_const(m_buttons)) {
        each->setCheckable(!momentary);
        each->setAutoExclusive(!momentary);
    }
    updateChecks();
}

void SegmentedControl::updateChecks()
{
    QAbstractButton *selected = m_isMomentary ? nullptr : m_buttons.value(m_selected);
    if (!selected)
        return;
    selected->setChecked(true);
    // Tab comes to the selected segment, and the arrow keys go on from there.
    for (QAbstractButton *each : std::as_const(m_buttons))
        each->setFocusPolicy(each == selected ? Qt::StrongFocus : Qt::ClickFocus);
}
