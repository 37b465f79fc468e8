#pragma once

#include "attributechange.h"
#include "textcleaner.h"

#include <QVector>

class DcmElement;

/// Lists what becomes of the attributes of a data set, for somebody to look at; does nothing until it is
/// switched on.
class ChangeRecorder
{
public:
    /// @param texts outlives it, and knows the character set of what it is given
    explicit ChangeRecorder(TextCleaner &texts)
        : m_texts(texts)
    { }

    void setOn(bool on) { m_isOn = on; }
    bool isOn() const { return m_isOn; }
    /// An attribute as it was. @param path of the items that it stands in
    AttributeChange before(DcmElement &element, const QString &path);
    /// Adds it with what it is now, where that is worth a look. @param after null where it is gone
    void add(AttributeChange change, DcmElement *after);
    const QVector<AttributeChange> &changes() const { return m_changes; }

    /// The path of an item of a sequence.
    QString within(const QString &sequence, int number) const;

private:
    TextCleaner &m_texts;
    bool m_isOn = false;
    QVector<AttributeChange> m_changes;
};
