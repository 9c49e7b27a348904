#include "FactLabel.h"

#include <QAccessible>
#include <QPainter>

using namespace Qt::StringLiterals;

FactLabel::FactLabel(QWidget *parent) : ElidedLabel(parent)
{
    setPlaceholderText(u"–"_s);
    m_tint.setStartValue(0.35);
    m_tint.setEndValue(0.0);
    m_tint.setDuration(2000);
    m_tint.setEasingCurve(QEasingCurve::InQuad);
    connect(&m_tint, &QVariantAnimation::valueChanged, this, [this] { update(); });
}

void FactLabel::setValue(const QString &value)
{
    setText(value);
    setStanding(Standing::Present);
}

void FactLabel::setStanding(Standing standing)
{
    if (standing == m_standing)
        return;
    m_standing = standing;
    m_tint.stop();
    const bool isEarlier = standing == Standing::Earlier;
    setForegroundRole(isEarlier ? QPalette::PlaceholderText : QPalette::NoRole);
    setToolTip(isEarlier ? tr("Of the file before: this one does not say") : QString());
    update();
    QAccessibleEvent changed(this, QAccessible::NameChanged);
    QAccessible::updateAccessibility(&changed);
}

void FactLabel::tint()
{
    m_tint.stop();
    m_tint.start();
}

bool FactLabel::showsText() const
{
    return m_standing != Standing::None && ElidedLabel::showsText();
}

QString FactLabel::spokenText() const
{
    return showsText() ? text() : tr("no value");
}

void FactLabel::paintEvent(QPaintEvent *event)
{
    ElidedLabel::paintEvent(event);
    if (m_tint.state() != QAbstractAnimation::Running)
        return;
    QColor colour = palette().color(QPalette::Highlight);
    colour.setAlphaF(m_tint.currentValue().toFloat());
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(colour);
    painter.drawRoundedRect(ground(), 4, 4);
}
