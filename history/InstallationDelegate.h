#pragma once

#include <QStyledItemDelegate>

#include <array>

/// Paints a line of the history as date, category with its icon, and template, in three columns.
/// A line that has no such parts is painted as it stands. Lines are taken apart only here, so that
/// a long history costs no more than what is seen of it.
class InstallationDelegate : public QStyledItemDelegate
{
    Q_OBJECT

public:
    using QStyledItemDelegate::QStyledItemDelegate;

    static constexpr int margin = 6; ///< on both sides of a column's text

    /// Where date, category and template stand in a row, as wide as the view's font needs them.
    [[nodiscard]] static std::array<QRect, 3> columns(const QRect &row, const QWidget *view);

    /// Of a row that shows something of each column.
    [[nodiscard]] static QSize smallestRow(const QWidget *view);

    void paint(QPainter *painter, const QStyleOptionViewItem &option,
               const QModelIndex &index) const override;
};
