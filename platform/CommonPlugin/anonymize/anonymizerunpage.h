#pragma once

#include "deidentifyreport.h"

#include <QWidget>

class PlainTableView;
class QCheckBox;
class QLabel;
class QProgressBar;
class QPushButton;
class QStandardItemModel;

/// How the making of anonymous copies goes, what must be looked at before they leave, and what became of
/// them. GUI thread.
class AnonymizeRunPage : public QWidget
{
    Q_OBJECT

public:
    explicit AnonymizeRunPage(QWidget *parent = nullptr);

    void showProgress(int done, int count);
    void showImporting();
    /// Asks what is to be done with copies in whose pictures names may be seen.
    void ask(const DeidentifyReport &report);
    void showEnd(const DeidentifyReport &report, const QStringList &extra);

signals:
    void cancelled();
    /// What was asked is answered.
    void answered(bool withBurnedIn);
    /// The report has been read.
    void left();

private:
    void build();
    QWidget *buildQuestion();
    QPushButton *addButton(QLayout *row, const QString &text, const QString &name);
    void addFile(const QString &path, const QString &why);
    void showFiles(const QString &name);
    void save();

    QLabel *m_title = nullptr;
    QProgressBar *m_bar = nullptr;
    QWidget *m_question = nullptr;
    QLabel *m_warning = nullptr;
    QCheckBox *m_looked = nullptr;
    PlainTableView *m_files = nullptr; ///< in doubt, or not copied
    QStandardItemModel *m_model = nullptr;
    QPushButton *m_cancel = nullptr;
    QPushButton *m_save = nullptr;
    QPushButton *m_leave = nullptr;
    QString m_text; ///< the report as it is saved
};
