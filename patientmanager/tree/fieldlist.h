#pragma once

#include <QHash>
#include <QStringListModel>

/// The names of fields, with their captions as tool tips. A field without one has no tool tip of its own.
class FieldList : public QStringListModel
{
    Q_OBJECT

public:
    using QStringListModel::QStringListModel;

    /// @param captions by name
    void setCaptions(const QHash<QString, QString> &captions) { m_captions = captions; }

    QVariant data(const QModelIndex &index, int role) const override;

private:
    QHash<QString, QString> m_captions;
};
