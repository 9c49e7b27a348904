#include "InstallationHistoryModel.h"

InstallationHistoryModel::InstallationHistoryModel(QObject *parent) : QAbstractTableModel(parent) {}

void InstallationHistoryModel::setObjectValue(const QVariant &installations)
{
    show(installationRecords(installations));
}

void InstallationHistoryModel::removeAll()
{
    show({});
}

int InstallationHistoryModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_records.size());
}

int InstallationHistoryModel::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : 1;
}

QVariant InstallationHistoryModel::data(const QModelIndex &index, int role) const
{
    if (!index.isValid() || (role != Qt::DisplayRole && role != Qt::ToolTipRole))
        return {};
    return m_records.at(index.row()).line;
}

QVariant InstallationHistoryModel::headerData(int section, Qt::Orientation orientation,
                                              int role) const
{
    if (section == 0 && orientation == Qt::Horizontal && role == Qt::DisplayRole)
        return tr("Installations");
    return {};
}

void InstallationHistoryModel::show(QList<InstallationRecord> records)
{
    beginResetModel();
    m_records = std::move(records);
    endResetModel();
}
