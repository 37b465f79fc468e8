#pragma once

#include "commonplugin_export.h"

#include <QWidget>

class QFormLayout;
class QLabel;

/**
 * Says where the index lies, how large it is and what it holds. Changes nothing.
 *
 * One window for the process; it reads anew whenever it is shown. GUI thread, default connection.
 */
class COMMONPLUGIN_EXPORT DataBaseSetForm : public QWidget
{
    Q_OBJECT

public:
    static DataBaseSetForm *instance();

public slots:
    void refresh();

protected:
    void showEvent(QShowEvent *event) override;

private:
    explicit DataBaseSetForm(QWidget *parent = nullptr);
    void build();
    QLabel *addLine(QFormLayout *lines, const QString &caption, const QString &objectName);

    QLabel *m_path = nullptr;
    QLabel *m_size = nullptr;
    QLabel *m_failure = nullptr;
    QList<QLabel *> m_counts; ///< in the order of the record levels
};
