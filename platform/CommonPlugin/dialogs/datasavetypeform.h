#pragma once

#include "commonplugin_export.h"

#include <QPointer>
#include <QWidget>

#include <functional>

/**
 * Asks whether an import copies files into the store or references them where they are.
 *
 * One window for the process, shown by whoever asks; closing it without a choice answers nothing. GUI thread.
 */
class COMMONPLUGIN_EXPORT DataSaveTypeForm : public QWidget
{
    Q_OBJECT

public:
    static DataSaveTypeForm *instance();

    /// Shows the window for one asker alone: dataType() is not sent, and a later question takes its place.
    void ask(QObject *asker, const std::function<void(int)> &answer);

signals:
    /// The choice: 0 references the files in place, 1 copies them into the store.
    void dataType(int type);

protected:
    void closeEvent(QCloseEvent *event) override;

private:
    explicit DataSaveTypeForm(QWidget *parent = nullptr);
    void build();
    void choose(int type);

    QPointer<QObject> m_asker;
    std::function<void(int)> m_answer;
};
