#pragma once

#include <QWidget>

class QLabel;
class QPushButton;

/// The foot of the anonymizer's window: what to do next, or why that cannot be done. GUI thread.
class AnonymizeFoot : public QWidget
{
    Q_OBJECT

public:
    enum class Page : quint8 { Setup, Changes, Run };
    struct State
    {
        Page page = Page::Setup;
        bool hasStudies = false; ///< that may be looked at
        bool isPreparing = false;
        QString fault; ///< of the last attempt to begin
        QString obstacle; ///< why nothing can be begun
        QString caution; ///< what to think of before
    };

    explicit AnonymizeFoot(QWidget *parent);

    void tell(const State &state);

signals:
    void previewWanted();
    void startWanted();
    void backWanted();

private:
    QPushButton *addButton(const char *name, const QString &text);

    QLabel *m_note;
    QPushButton *m_back;
    QPushButton *m_preview;
    QPushButton *m_start;
};
