#pragma once

#include "patientmanager_export.h"

#include <QPersistentModelIndex>
#include <QPointer>
#include <QWidget>

#include <memory>

class ConditionModel;
class InquiryFields;
class InquirySaveForm;
class QListView;

namespace Ui {
class AdvancedInquiryForm;
}

enum class RecordLevel : quint8;

/**
 * The editor of stored inquiries: composes the conditions of one, and stores, renames and deletes it at once,
 * on the default connection.
 *
 * A window of its own, which deletes itself when closed. What a program calls is done without a question;
 * what the user does by hand asks before it drops unsaved changes (closing, picking another inquiry, a new
 * one) or deletes an inquiry. After "New" no stored inquiry stands behind the conditions until they are saved
 * under a name. Tells by signals what it did; runs no inquiry. GUI thread.
 */
class PATIENTMANAGER_EXPORT AdvancedInquiryForm : public QWidget
{
    Q_OBJECT

public:
    /// @param inquiryName the inquiry shown first, where it is stored; else the first one
    explicit AdvancedInquiryForm(QWidget *parent, const QString &inquiryName);
    ~AdvancedInquiryForm() override;

signals:
    /// An inquiry of this name has been stored.
    void setComboBox(const QString &name);
    /// The inquiry just stored is the current one.
    void setComboBoxIdx(const QString &name);
    /// The inquiry of this name has been deleted.
    void setDeleteIdx(const QString &name);
    /// Answers getText(): why the name was refused, empty where it was accepted.
    void sameInquiryName(const QString &text);

public slots:
    /// Adds the selected fields of both lists as conditions.
    void on_InquiryButton_clicked();
    /// Four empty groups.
    void on_NewTree_clicked();
    /// Removes the selected conditions.
    void on_InquiryCancel_clicked();
    /// Overwrites the current inquiry.
    void on_Save_clicked();
    /// Asks for a name, which comes back through getText().
    void on_SaveAs_clicked();
    /// Deletes the current inquiry and shows the one that is current then.
    void on_Delete_clicked();
    /// Stores the conditions under a name that is free.
    void getText(const QString &name);
    /// Makes the inquiry of this name the current one; blind to case where none has just this one. Unknown
    /// names do nothing.
    void getComboBoxIdx(const QString &name);
    /// Fields of 0 patients, 1 studies in the first list.
    void onListSelectPD(int index);
    /// Fields of 0 series, 1 images in the second list.
    void onListSelectSI(int index);
    /// Loads the inquiry at this place of the combo box.
    void onTreeView(int index);

protected:
    bool event(QEvent *event) override;
    void closeEvent(QCloseEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

private:
    void build();
    void buildConditionView();
    void buildFieldLists();
    void buildKeys();
    void addName(const QString &name);
    void addSelected(QListView *list, RecordLevel level);
    void addField(QListView *list, const QModelIndex &field);
    void addFields(QListView *list, const QList<int> &rows, RecordLevel level);
    RecordLevel upperLevel() const;
    RecordLevel lowerLevel() const;
    void setConditionModel(ConditionModel *model);
    void showConditions();
    void fitColumn(int column);
    void pick(int index);
    void setShown(int index);
    void updateButtons();
    void finishEditing();
    bool mayDropChanges();
    bool mayDelete(const QString &name);
    void tellRefusal(bool byHand);
    void dropSaveForm();

    std::unique_ptr<Ui::AdvancedInquiryForm> ui;
    ConditionModel *m_model = nullptr;
    InquiryFields *m_fields;
    QPersistentModelIndex m_shown; ///< the stored inquiry behind the conditions, in the combo box
    QPointer<InquirySaveForm> m_saveForm;
    bool m_isEscapeFree = false; ///< neither an open list nor a cell being edited claims the next Escape
};
