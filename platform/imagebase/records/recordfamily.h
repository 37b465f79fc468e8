#pragma once

#include <QList>
#include <QSet>

/**
 * How records of two levels own one another: the parent its list of children, each child a pointer to its
 * parent. A child belongs to one parent at most, and signs out of it when it is deleted.
 */
template <typename Parent, typename Child>
class RecordFamily
{
public:
    RecordFamily(QList<Child *> Parent::*children, Parent *Child::*parent)
        : m_children(children)
        , m_parent(parent)
    { }

    /// Gives the parent these children, taken from whoever has them, in the place of those it has.
    void replace(Parent *parent, const QList<Child *> &children) const
    {
        const QSet<Child *> kept(children.begin(), children.end());
        for (Child *old : qAsConst(parent->*m_children)) {
            old->*m_parent = nullptr;
            if (!kept.contains(old)) {
                delete old;
            }
        }
        (parent->*m_children).clear();
        for (Child *child : children) {
            if (child->*m_parent != parent) {
                leave(child);
                child->setParent(nullptr);
                child->*m_parent = parent;
                (parent->*m_children).append(child);
            }
        }
    }

    /// Adds a new child at the end.
    void append(Parent *parent, Child *child) const
    {
        child->*m_parent = parent;
        (parent->*m_children).append(child);
    }

    /// For the destructor of a child.
    void leave(Child *child) const
    {
        if (Parent *parent = child->*m_parent) {
            (parent->*m_children).removeOne(child);
        }
    }

private:
    QList<Child *> Parent::*m_children;
    Parent *Child::*m_parent;
};
