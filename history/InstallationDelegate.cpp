#include "InstallationDelegate.h"

#include "InstallationRecord.h"
#include "library/TemplateLibrary.h"
#include "widgets/Legibility.h"

#include <QApplication>
#include <QIcon>
#include <QPainter>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

QIcon iconOf(const QString &category)
{
    const QString name = u":/icons/"_s + category.toLower();
    QIcon icon(name + u".png"_s);
    icon.addFile(name + u"-24.png"_s);
    return icon;
}

} // namespace

std::array<QRect, 3> InstallationDelegate::columns(const QRect &row, const QWidget *view)
{
    const QFontMetrics metrics = view->fontMetrics();
    int name = 0;
    for (const TemplateCategory &each : TemplateLibrary::categories())
        name = std::max(name, metrics.horizontalAdvance(each.name));
    const int date = metrics.horizontalAdvance(u"0000-00-00 00:00:00"_s) + 3 * margin;
    const int category = besideText(*view, 16) + name + 4 * margin;

    std::array columns{
        QRect(row.left(), row.top(), date, row.height()),
        QRect(row.left() + date, row.top(), category, row.height()),
        QRect(row.left() + date + category, row.top(), row.width() - date - category, row.height()),
    };
    for (QRect &each : columns)
        each = QStyle::visualRect(view->layoutDirection(), row, each);
    return columns;
}

QSize InstallationDelegate::smallestRow(const QWidget *view)
{
    const auto [date, category, name] = columns({}, view);
    const QFontMetrics metrics = view->fontMetrics();
    return {date.width() + category.width() + 16 * metrics.averageCharWidth(),
            std::max(metrics.height(), besideText(*view, 16)) + 8};
}

void InstallationDelegate::paint(QPainter *painter, const QStyleOptionViewItem &option,
                                 const QModelIndex &index) const
{
    QStyleOptionViewItem row = option;
    initStyleOption(&row, index);
    const QString line = std::exchange(row.text, QString());
    const QWidget *view = option.widget;
    view->style()->drawControl(QStyle::CE_ItemViewItem, &row, painter, view);

    const QPalette::ColorGroup group =
        (row.state & QStyle::State_Active) != 0 ? QPalette::Active : QPalette::Inactive;
    const bool isSelected = (row.state & QStyle::State_Selected) != 0;
    painter->save();
    painter->setFont(row.font);
    painter->setLayoutDirection(Qt::LayoutDirectionAuto); // a date reads from its own side
    painter->setPen(
        row.palette.color(group, isSelected ? QPalette::HighlightedText : QPalette::Text));
    const auto draw = [&](QRect area, const QString &text) {
        area.adjust(margin, 0, -margin, 0);
        painter->drawText(
            area,
            int(Qt::TextSingleLine | QStyle::visualAlignment(row.direction, row.displayAlignment)),
            row.fontMetrics.elidedText(text, Qt::ElideRight, area.width()));
    };
    const auto [date, category, name] = columns(row.rect, view);
    const auto parts = InstallationRecord{line}.parts();
    if (parts && row.fontMetrics.horizontalAdvance(parts->date) <= date.width() - 2 * margin) {
        draw(date, parts->date);
        const int size = besideText(*view, 16);
        const bool isMirrored = row.direction == Qt::RightToLeft;
        const QRect icon = QStyle::alignedRect(row.direction, Qt::AlignVCenter, {size, size},
                                               category.adjusted(margin, 0, -margin, 0));
        if (isSelected)
            painter->fillRect(icon.adjusted(-2, -2, 2, 2), row.palette.base());
        iconOf(parts->category).paint(painter, icon);
        const int beside = size + margin;
        draw(category.adjusted(isMirrored ? 0 : beside, 0, isMirrored ? -beside : 0, 0),
             parts->category);
        draw(name, parts->templateName);
    } else {
        draw(row.rect, line);
    }
    painter->restore();
}
