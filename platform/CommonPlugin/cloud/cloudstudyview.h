#pragma once

#include <QTreeView>

class CloudStudyModel;

/// The studies found in the cloud: space checks, Enter fetches. GUI thread.
class CloudStudyView : public QTreeView
{
    Q_OBJECT

public:
    CloudStudyView(CloudStudyModel *model, QWidget *parent);

    /// What is said in the place of rows.
    void setEmptyText(const QString &text);

signals:
    void fetchRequested();

protected:
    void paintEvent(QPaintEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

private:
    QString m_emptyText;
};
