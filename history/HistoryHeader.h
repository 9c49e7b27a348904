#pragma once

#include <QHeaderView>

/// Names the three columns that InstallationDelegate paints.
class HistoryHeader : public QHeaderView
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(HistoryHeader)

public:
    explicit HistoryHeader(QWidget *table);

protected:
    void paintSection(QPainter *painter, const QRect &rect, int section) const override;
};
