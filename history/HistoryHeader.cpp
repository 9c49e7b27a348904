#include "HistoryHeader.h"

#include "InstallationDelegate.h"

#include <QPainter>

HistoryHeader::HistoryHeader(QWidget *table) : QHeaderView(Qt::Horizontal, table)
{
    setSectionsClickable(false);
    setStretchLastSection(true);
}

void HistoryHeader::paintSection(QPainter *painter, const QRect &rect, int) const
{
    const std::array titles{tr("Date"), tr("Category"), tr("Template")};
    constexpr std::array places{QStyleOptionHeader::Beginning, QStyleOptionHeader::Middle,
                                QStyleOptionHeader::End};
    const auto columns = InstallationDelegate::columns(rect, parentWidget());
    for (std::size_t column = 0; column < columns.size(); ++column) {
        QStyleOptionHeader option;
        initStyleOption(&option);
        option.rect = columns.at(column);
        option.text = titles.at(column);
        option.textAlignment =
            QStyle::visualAlignment(layoutDirection(), Qt::AlignLeft | Qt::AlignVCenter);
        option.position = places.at(column);
        style()->drawControl(QStyle::CE_HeaderSection, &option, painter, this);
        constexpr int margin = InstallationDelegate::margin;
        option.rect.adjust(margin, 0, -margin, 0);
        style()->drawControl(QStyle::CE_HeaderLabel, &option, painter, this);
    }
}
