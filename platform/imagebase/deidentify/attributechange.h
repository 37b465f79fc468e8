#pragma once

#include <QString>

/// What becomes of one attribute.
struct AttributeChange
{
    enum class Kind : quint8 { Text, Items, Bytes };

    QString place; ///< the tag, behind those of the sequences that it is in, with the numbers of their items
    QString name; ///< the standard's, or empty
    Kind kind = Kind::Text;
    QString before; ///< the first characters of a text
    qint64 amount = 0; ///< of items or bytes
    QString after;
    bool isRemoved = false;
};
