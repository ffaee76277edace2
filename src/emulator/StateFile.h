#pragma once

#include <QJsonObject>
#include <QString>

// The file that holds the printer's memory between runs. Saving is atomic
// (a temporary file renamed over the old one), so a run that dies while
// saving leaves the previous state whole. A file that cannot be read as a
// state is set aside beside it (".damaged-<time>") and never overwritten.
class StateFile
{
public:
    enum class Outcome { Missing, Loaded, Damaged };
    struct Loaded
    {
        Outcome outcome = Outcome::Missing;
        QJsonObject json;
        QString message; // for the technician; empty when all is well
    };

    explicit StateFile(const QString &path) : m_path(path) {}
    QString path() const { return m_path; }

    Loaded load() const;
    bool save(const QJsonObject &json, QString *error = nullptr) const;

private:
    QString m_path;
};
