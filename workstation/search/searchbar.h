#pragma once

#include "datepick.h"

#include <QWidget>

class QComboBox;
class QLabel;
class QLineEdit;

/**
 * The line above the tables in which the user looks for patients: a text, the days of the studies, and how
 * many patients the table shows. A view: it reports what the user wants and shows what it is told.
 */
class SearchBar : public QWidget
{
    Q_OBJECT

public:
    explicit SearchBar(QWidget *parent = nullptr);

    /// What the table shows. Emits nothing, and leaves the cursor alone where the text is the same.
    void setShown(const QString &text, DatePick pick);
    /// @param total of the index; not less than found
    void setCount(int found, qint64 total);
    /// Says that the answer is still being looked for, or why there is none.
    void setNote(const QString &note);

    QString text() const;
    DatePick pick() const;
    QString badge() const;

public slots:
    /// Gives the text the focus and selects it, so that typing replaces it.
    void takeFocus();

signals:
    /// The user has changed the text.
    void textWanted(const QString &text);
    void pickWanted(DatePick pick);
    /// The user has finished and wants to go on in the table.
    void rowsWanted();

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void addPicks();
    void offerOther(bool isShown);
    void setBadge(const QString &text);

    QLineEdit *const m_text;
    QComboBox *const m_pick;
    QLabel *const m_badge;
};
