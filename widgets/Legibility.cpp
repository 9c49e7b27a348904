#include "Legibility.h"

#include <QAbstractButton>
#include <QApplication>
#include <QEvent>
#include <QLabel>
#include <QPalette>
#include <QStyle>
#include <QWidget>

#include <cmath>

namespace {

double luminance(const QColor &colour)
{
    const auto linear = [](double share) {
        return share <= 0.04045 ? share / 12.92 : std::pow((share + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(colour.redF()) + 0.7152 * linear(colour.greenF()) +
           0.0722 * linear(colour.blueF());
}

double contrast(const QColor &one, const QColor &other)
{
    const auto [darker, lighter] = std::minmax({luminance(one), luminance(other)});
    return (lighter + 0.05) / (darker + 0.05);
}

QColor blended(const QColor &text, const QColor &ground, float share)
{
    const auto mix = [share](float one, float other) { return one * share + other * (1 - share); };
    return QColor::fromRgbF(mix(text.redF(), ground.redF()), mix(text.greenF(), ground.greenF()),
                            mix(text.blueF(), ground.blueF()));
}

/// The text's colour, as quiet as it can be in a field and on a window.
QColor placeholderColour(const QPalette &palette)
{
    constexpr double enough = 4.6; // colours are rounded
    const QColor text = palette.color(QPalette::Active, QPalette::Text);
    const auto isLegible = [&](float share) {
        for (const auto role : {QPalette::Base, QPalette::Window}) {
            const QColor ground = palette.color(QPalette::Active, role);
            if (contrast(blended(text, ground, share), ground) < enough)
                return false;
        }
        return true;
    };
    float share = 0.5F;
    while (share < 1 && !isLegible(share))
        share += 0.02F;
    QColor colour = text;
    colour.setAlphaF(qMin(share, 1.0F));
    return colour;
}

void adaptPlaceholders()
{
    QPalette palette = QApplication::palette();
    const QColor colour = placeholderColour(palette);
    if (palette.color(QPalette::PlaceholderText) == colour)
        return;
    palette.setColor(QPalette::PlaceholderText, colour);
    QApplication::setPalette(palette);
}

/// The desktop may turn dark at any time.
class PaletteFollower : public QObject
{
public:
    using QObject::QObject;

    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (watched == qApp && event->type() == QEvent::ApplicationPaletteChange)
            adaptPlaceholders();
        return false;
    }
};

} // namespace

QFont headingFont()
{
    QFont font = QApplication::font();
    font.setPointSizeF(QFontInfo(font).pointSizeF() * 1.4);
    font.setBold(true);
    return font;
}

int besideText(const QWidget &widget, int pixels)
{
    constexpr int usualTextHeight = 17;
    return qMax(pixels, pixels * widget.fontMetrics().height() / usualTextHeight);
}

QPixmap pictureBesideText(const QWidget &widget, const QIcon &icon, int pixels)
{
    constexpr qreal finest = 3; // a picture is drawn for screens up to this
    const qreal ratio = widget.devicePixelRatioF();
    const int side = qRound(besideText(widget, pixels) * ratio);
    QPixmap picture = icon.pixmap(QSize(pixels, pixels), side > pixels * ratio ? finest : ratio);
    if (!picture.isNull() && picture.width() != side)
        picture = picture.scaled(side, side, Qt::KeepAspectRatio, Qt::SmoothTransformation);
    picture.setDevicePixelRatio(ratio);
    return picture;
}

void growIcon(QAbstractButton *button, int pixels)
{
    button->setIcon(pictureBesideText(*button, button->icon(), pixels));
    button->setIconSize(QSize(1, 1) * besideText(*button, pixels));
}

void showWarningIcon(QLabel *label, bool isShown)
{
    label->setVisible(isShown);
    if (isShown) {
        const QIcon icon = label->style()->standardIcon(QStyle::SP_MessageBoxWarning);
        label->setPixmap(pictureBesideText(*label, icon, 20));
    }
}

void keepPlaceholdersLegible(QObject *owner)
{
    adaptPlaceholders();
    qApp->installEventFilter(new PaletteFollower(owner));
}
