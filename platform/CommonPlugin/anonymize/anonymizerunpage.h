#pragma once

#include "deidentifyreport.h"
#include "importreport.h"

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
    /// Asks what is to be done with copies that the index has not taken.
    void askAgain(const DeidentifyReport &report, const ImportReport &import);
    /// @param request what was asked for
    void showEnd(const DeidentifyReport &report, const DeidentifyRequest &request, const QStringList &extra);

signals:
    void cancelled();
    /// Images in doubt are to be looked at, beginning with the chosen one.
    void picturesWanted(const QStringList &paths);
    /// What was asked is answered.
    void answered(bool withBurnedIn);
    void againWanted();
    void keepWanted();
    /// The report has been read.
    void left();

private:
    void build();
    QWidget *buildQuestion();
    QWidget *buildImportQuestion();
    QPushButton *addButton(QLayout *row, const QString &text, const QString &name);
    void addFile(const QString &path, const QString &why);
    void showFiles(const QString &name);
    void openPictures();
    void save();

    QLabel *m_title = nullptr;
    QProgressBar *m_bar = nullptr;
    QWidget *m_question = nullptr;
    QLabel *m_warning = nullptr;
    QWidget *m_importQuestion = nullptr;
    QLabel *m_notTaken = nullptr;
    QPushButton *m_again = nullptr;
    QCheckBox *m_looked = nullptr;
    PlainTableView *m_files = nullptr; ///< in doubt, not copied, or not imported
    QStandardItemModel *m_model = nullptr;
    QPushButton *m_cancel = nullptr;
    QPushButton *m_save = nullptr;
    QPushButton *m_leave = nullptr;
    QLabel *m_caution = nullptr; ///< about the report
    QString m_text; ///< the report as it is saved
};
