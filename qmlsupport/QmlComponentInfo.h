// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QObject>
#include <QString>
#include <QUrl>

/// One page of the page column: its translated title, document and icon. Lives on the GUI thread.
class QmlComponentInfo : public QObject
{
    Q_OBJECT
    Q_PROPERTY(QString title READ title NOTIFY titleChanged)
    Q_PROPERTY(QUrl url READ url CONSTANT)
    Q_PROPERTY(QUrl icon READ icon CONSTANT)

public:
    QmlComponentInfo(const QString& title, const QUrl& url, const QUrl& icon, QObject* parent = nullptr);

    virtual QString title() const { return m_title; }
    virtual QUrl url() const { return m_url; }
    virtual QUrl icon() const { return m_icon; }
    /// Emits titleChanged when the title changes.
    virtual void setTitle(const QString& title);

Q_SIGNALS:
    void titleChanged();

private:
    QString m_title;
    const QUrl m_url;
    const QUrl m_icon;
};
