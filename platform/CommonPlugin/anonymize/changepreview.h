#pragma once

#include "deidentifyreport.h"

#include <QPointer>
#include <QWidget>

class ChangeModel;
class IndexJob;
class PlainTableView;
class QLabel;
class QSpinBox;

/// Shows what would become of one image, of some that can be paged through. Reads on a thread; GUI thread.
class ChangePreview : public QWidget
{
    Q_OBJECT

public:
    explicit ChangePreview(QWidget *parent = nullptr);

    /// Shows the first of the request's files; nothing is written.
    void show(const DeidentifyRequest &request);

private:
    void build();
    void read();
    void showResult(const DeidentifiedFile &result);

    DeidentifyRequest m_request;
    QSpinBox *m_number = nullptr;
    QLabel *m_state = nullptr;
    PlainTableView *m_table = nullptr;
    ChangeModel *m_model = nullptr;
    QPointer<IndexJob> m_job; ///< the one that somebody waits for; earlier ones end by themselves
};
