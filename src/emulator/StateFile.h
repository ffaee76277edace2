// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QFile>
#include <QJsonObject>
#include <QString>

#include <functional>

// The file that holds the printer's memory between runs, in two parts:
//
//  - the snapshot (the path itself): the whole memory as one JSON object,
//    written atomically (a temporary file renamed over the old one), so that
//    a run that dies while writing it leaves the previous one whole;
//  - the log (path + ".log"): what changed since, one JSON record per line,
//    each appended with a single write before the printer answers.
//
// Loading reads the snapshot and replays the log onto it. A record cut short
// by a kill is the last line and was never answered: it is dropped. Each
// record carries a running number and the snapshot the number of the last
// record it holds, so a kill between writing a snapshot and emptying the log
// replays nothing twice. A snapshot that cannot be read, or a log with a bad
// record before its end, is set aside beside it (".damaged-<time>") and
// never overwritten. A snapshot without a log (as older runs wrote them)
// loads as it always did.
class StateFile
{
public:
    enum class Outcome { Missing, Loaded, Damaged };
    struct Loaded
    {
        Outcome outcome = Outcome::Missing;
        QJsonObject json;
        QString message; // for the technician; empty when all is well
        int replayed = 0; // log records applied to the snapshot
    };

    explicit StateFile(const QString &path) : m_path(path) {}
    QString path() const { return m_path; }
    QString logPath() const { return m_path + QStringLiteral(".log"); }

    Loaded load() const;
    // A new snapshot; the log is emptied once the snapshot is in place.
    bool save(const QJsonObject &json, QString *error = nullptr) const;
    // The same, with the journal's documents handed over one at a time
    // (`fields` has no "entries" in its "journal"), so that a long journal
    // is never held twice in memory while it is written.
    bool save(const QJsonObject &fields, qsizetype entries, const std::function<QJsonObject(qsizetype)> &entry,
              QString *error = nullptr) const;
    // One record of changes, written before this returns. A record has
    // "set" (top-level members of the memory replaced whole), and may have
    // "entries" (journal documents) with "from" (the number of documents kept
    // before them: less than the journal holds when it was formatted).
    bool append(QJsonObject record, QString *error = nullptr) const;

    // Bytes in the log since the last snapshot, and the snapshot's own size:
    // the log is worth folding into a snapshot once it outgrows the snapshot.
    qint64 logBytes() const { return m_logBytes; }
    qint64 snapshotBytes() const { return m_snapshotBytes; }

private:
    bool openLog(QString *error) const;
    QString setAside(const QString &file) const;

    QString m_path;
    mutable QFile m_log;
    mutable qint64 m_seq = 0;
    mutable qint64 m_logBytes = 0;
    mutable qint64 m_snapshotBytes = 0;
};
