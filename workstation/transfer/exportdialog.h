#pragma once

#include "exportrequest.h"

#include <QDialog>

class QButtonGroup;
class QCheckBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QThread;

/**
 * Asks how and where records are to be exported, and says how much that is. Tells the answer with
 * requested(); exports nothing itself. GUI thread; counts on a thread of its own.
 */
class ExportDialog : public QDialog
{
    Q_OBJECT

public:
    /// @param records database, level and keys; its other values are proposed
    /// @param what the records are called, such as "3 series"
    ExportDialog(const ExportRequest &records, const QString &what, QWidget *parent = nullptr);
    ~ExportDialog() override;

    /// Says why it cannot go ahead instead of closing, where it cannot.
    void accept() override;

signals:
    void requested(const ExportRequest &request);

private:
    void build(const QString &what);
    QWidget *buildFormats();
    QLayout *buildTarget();
    void count();
    void browse();
    void follow();
    ExportFormat format() const;
    QString zipProposal(const QString &folder) const;
    QString problem() const;

    ExportRequest m_request;
    QLabel *m_size = nullptr;
    QButtonGroup *m_formats = nullptr;
    QLabel *m_targetCaption = nullptr;
    QLineEdit *m_target = nullptr;
    QCheckBox *m_check = nullptr;
    QCheckBox *m_compress = nullptr;
    QLabel *m_problem = nullptr;
    QThread *m_counter = nullptr;
    QString m_what;
};
