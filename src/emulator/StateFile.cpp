#include "StateFile.h"

#include <QDateTime>
#include <QFile>
#include <QFileInfo>
#include <QJsonDocument>
#include <QJsonParseError>
#include <QSaveFile>

StateFile::Loaded StateFile::load() const
{
    Loaded out;
    QFile file(m_path);
    if (!file.exists()) {
        out.message = QStringLiteral("no state file %1 yet: starting as a new printer").arg(m_path);
        return out;
    }
    QString why;
    if (!file.open(QIODevice::ReadOnly)) {
        why = file.errorString();
    } else {
        QJsonParseError err;
        const QJsonDocument doc = QJsonDocument::fromJson(file.readAll(), &err);
        file.close();
        if (err.error != QJsonParseError::NoError)
            why = QStringLiteral("%1 at byte %2").arg(err.errorString()).arg(err.offset);
        else if (!doc.isObject())
            why = QStringLiteral("it holds no printer memory");
        else {
            out.outcome = Outcome::Loaded;
            out.json = doc.object();
            return out;
        }
    }
    out.outcome = Outcome::Damaged;
    const QString aside = m_path + QStringLiteral(".damaged-")
                          + QDateTime::currentDateTime().toString(QStringLiteral("yyyyMMdd-HHmmss"));
    if (QFile::rename(m_path, aside))
        out.message = QStringLiteral("the state file %1 is damaged (%2); it was kept as %3 and the printer starts new")
                          .arg(m_path, why, QFileInfo(aside).fileName());
    else
        out.message = QStringLiteral("the state file %1 is damaged (%2) and could not be set aside; "
                                     "the printer starts new and will overwrite it")
                          .arg(m_path, why);
    return out;
}

bool StateFile::save(const QJsonObject &json, QString *error) const
{
    QSaveFile file(m_path);
    if (!file.open(QIODevice::WriteOnly)) {
        if (error)
            *error = file.errorString();
        return false;
    }
    const QByteArray bytes = QJsonDocument(json).toJson(QJsonDocument::Compact);
    if (file.write(bytes) != bytes.size()) {
        if (error)
            *error = file.errorString();
        file.cancelWriting();
        return false;
    }
    if (!file.commit()) {
        if (error)
            *error = file.errorString();
        return false;
    }
    return true;
}
