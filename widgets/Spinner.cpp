#include "Spinner.h"

#include <QPainter>

namespace {

constexpr int spokes = 12;
constexpr std::chrono::milliseconds stepTime{80};

} // namespace

Spinner::Spinner(QWidget *parent) : QWidget(parent)
{
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    m_timer.setInterval(stepTime);
    connect(&m_timer, &QTimer::timeout, this, &Spinner::advance);
}

void Spinner::startAnimation()
{
    m_timer.start();
    update();
}

void Spinner::stopAnimation()
{
    m_timer.stop();
    update();
}

void Spinner::advance()
{
    m_step = (m_step + 1) % spokes;
    update();
}

void Spinner::paintEvent(QPaintEvent *)
{
    if (!isAnimating())
        return;
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.translate(QRectF(rect()).center());
    const qreal radius = qMin(width(), height()) / 2.0;
    QColor colour = palette().color(QPalette::WindowText);
    painter.rotate(m_step * 360.0 / spokes);
    for (int spoke = 1; spoke <= spokes; ++spoke) {
        painter.rotate(360.0 / spokes);
        colour.setAlphaF(static_cast<float>(spoke) / spokes);
        painter.setPen(QPen(colour, radius * 0.18, Qt::SolidLine, Qt::RoundCap));
        painter.drawLine(QPointF(0, -radius * 0.5), QPointF(0, -radius * 0.85));
    }
}
