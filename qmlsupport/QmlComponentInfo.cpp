// SPDX-License-Identifier: GPL-3.0-or-later
#include "qmlsupport/QmlComponentInfo.h"

QmlComponentInfo::QmlComponentInfo(const QString& title, const QUrl& url, const QUrl& icon, QObject* parent)
    : QObject(parent), m_title(title), m_url(url), m_icon(icon)
{}

void QmlComponentInfo::setTitle(const QString& title)
{
    if (title == m_title)
        return;
    m_title = title;
    Q_EMIT titleChanged();
}
