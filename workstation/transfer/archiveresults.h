#pragma once

#include <QTreeView>

class ArchiveModel;

/// What an archive was found to have, as a tree to choose from. GUI thread.
class ArchiveResults : public QTreeView
{
    Q_OBJECT

public:
    /// @param model outlives the view
    explicit ArchiveResults(ArchiveModel *model, QWidget *parent = nullptr);

    /// The rows of studies and series that are chosen, all studies of a chosen patient among them. What
    /// stands below something else that is chosen comes with that.
    QModelIndexList chosen() const;
    /// Said where there are no rows.
    void setEmptyText(const QString &text);

signals:
    /// The chosen rows are wanted, by the key.
    void retrieveRequested();

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    bool isAboveChosen(const QModelIndex &row) const;

    const ArchiveModel *const m_archive;
    QString m_emptyText;
};
