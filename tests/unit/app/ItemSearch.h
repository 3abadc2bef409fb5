// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QQuickItem>

/// Returns the first item of the tree that has a property of that name.
inline QQuickItem* itemWith(QQuickItem* root, const char* property)
{
    if (root->property(property).isValid())
        return root;
    const QList<QQuickItem*> children = root->childItems();
    for (QQuickItem* child : children) {
        if (QQuickItem* found = itemWith(child, property))
            return found;
    }
    return nullptr;
}
