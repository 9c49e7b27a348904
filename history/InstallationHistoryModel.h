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

    /// Shows this array of records; an invalid value shows none. Where it is the history of before
    /// and more, the rows of before stay as they are.
    void setObjectValue(const QVariant &installations);

    /// Removes the lines that are shown; the stored history is its owner's to remove.
    void removeAll();

    /// From now on only lines that hold all words of this text are rows, whatever their case.
    void setFilter(const QString &words);

    /// Of all records, also those that the filter hides.
    [[nodiscard]] qsizetype recordCount() const { return m_records.size(); }

    [[nodiscard]] int rowCount(const QModelIndex &parent = {}) const override;
    [[nodiscard]] int columnCount(const QModelIndex &parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex &index, int role) const override;
    [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation,
                                      int role) const override;

private:
    [[nodiscard]] QList<InstallationRecord> filtered() const;
    void reset();

    QList<InstallationRecord> m_records;
    QList<InstallationRecord> m_rows;
    QStringList m_words;
};
