#include "InstallationHistoryModel.h"

#include "widgets/ElidedLabel.h"

#include <algorithm>

InstallationHistoryModel::InstallationHistoryModel(QObject *parent) : QAbstractTableModel(parent) {}

void InstallationHistoryModel::setObjectValue(const QVariant &installations)
{
    m_records = installationRecords(installations);
    const QList<InstallationRecord> rows = filtered();
    const bool grows = !m_rows.isEmpty() && rows.size() > m_rows.size() &&
                       std::equal(m_rows.begin(), m_rows.end(), rows.begin());
    if (!grows) {
        reset();
        return;
    }
    beginInsertRows({}, rowCount(), static_cast<int>(rows.size()) - 1);
    m_rows = rows;
    endInsertRows();
}

void InstallationHistoryModel::removeAll()
{
    m_records.clear();
    reset();
}

void InstallationHistoryModel::setFilter(const QString &words)
{
    m_words = words.simplified().split(u' ', Qt::SkipEmptyParts);
    reset();
}

int InstallationHistoryModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_rows.size());
}

int InstallationHistoryModel::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : 1;
}

QVariant InstallationHistoryModel::data(const QModelIndex &index, int role) const
{
    if (!index.isValid())
        return {};
    const QString &line = m_rows.at(index.row()).line;
    switch (role) {
    case Qt::DisplayRole:
        return line;
    case Qt::ToolTipRole:
        return toolTipOf(line);
    default:
        return {};
    }
}

QVariant InstallationHistoryModel::headerData(int section, Qt::Orientation orientation,
                                              int role) const
{
    if (section == 0 && orientation == Qt::Horizontal && role == Qt::DisplayRole)
        return tr("Installations");
    return {};
}

QList<InstallationRecord> InstallationHistoryModel::filtered() const
{
    if (m_words.isEmpty())
        return m_records;
    QList<InstallationRecord> rows;
    std::ranges::copy_if(m_records, std::back_inserter(rows), [&](const InstallationRecord &each) {
        return std::ranges::all_of(m_words, [&](const QString &word) {
            return each.line.contains(word, Qt::CaseInsensitive);
        });
    });
    return rows;
}

void InstallationHistoryModel::reset()
{
    beginResetModel();
    m_rows = filtered();
    endResetModel();
}
