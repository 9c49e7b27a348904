#pragma once

#include "InstallationRecord.h"

#include <QAbstractTableModel>

/// The installation history as one column of lines, oldest first.
class InstallationHistoryModel : public QAbstractTableModel
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(InstallationHistoryModel)

public:
    explicit InstallationHistoryModel(QObject *parent = nullptr);

    /// Shows this array of records; an invalid value shows none.
    void setObjectValue(const QVariant &installations);

    /// Removes the lines that are shown; the stored history is its owner's to remove.
    void removeAll();

    [[nodiscard]] int rowCount(const QModelIndex &parent = {}) const override;
    [[nodiscard]] int columnCount(const QModelIndex &parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex &index, int role) const override;
    [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation,
                                      int role) const override;

private:
    void show(QList<InstallationRecord> records);

    QList<InstallationRecord> m_records;
};
