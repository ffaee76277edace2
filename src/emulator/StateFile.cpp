// SPDX-License-Identifier: GPL-3.0-or-later
#include "StateFile.h"

#include <QDateTime>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonParseError>
#include <QSaveFile>

static const QString SeqKey = QStringLiteral("logSeq");

QString StateFile::setAside(const QString &file) const
{
    const QString aside = file + QStringLiteral(".damaged-")
                          + QDateTime::currentDateTime().toString(QStringLiteral("yyyyMMdd-HHmmss"));
    return QFile::rename(file, aside) ? aside : QString();
}

StateFile::Loaded StateFile::load() const
{
    Loaded out;
    m_log.close();
    m_seq = 0;
    m_logBytes = 0;
    m_snapshotBytes = 0;
    QFile file(m_path);
    if (!file.exists()) {
        out.message = QStringLiteral("no state file %1 yet: starting as a new printer").arg(m_path);
        // A log without its snapshot belongs to a memory that is gone.
        if (QFile::exists(logPath())) {
            const QString aside = setAside(logPath());
            out.message += QStringLiteral("; its log without it was kept as %1").arg(QFileInfo(aside).fileName());
        }
        return out;
    }
    QString why;
    if (!file.open(QIODevice::ReadOnly)) {
        why = file.errorString();
    } else {
        QJsonParseError err;
        const QByteArray bytes = file.readAll();
        const QJsonDocument doc = QJsonDocument::fromJson(bytes, &err);
        file.close();
        if (err.error != QJsonParseError::NoError)
            why = QStringLiteral("%1 at byte %2").arg(err.errorString()).arg(err.offset);
        else if (!doc.isObject())
            why = QStringLiteral("it holds no printer memory");
        else {
            out.outcome = Outcome::Loaded;
            out.json = doc.object();
            m_snapshotBytes = bytes.size();
        }
    }
    if (out.outcome != Outcome::Loaded) {
        out.outcome = Outcome::Damaged;
        const QString aside = setAside(m_path);
        if (!aside.isEmpty())
            out.message = QStringLiteral("the state file %1 is damaged (%2); it was kept as %3 and the printer starts new")
                              .arg(m_path, why, QFileInfo(aside).fileName());
        else
            out.message = QStringLiteral("the state file %1 is damaged (%2) and could not be set aside; "
                                         "the printer starts new and will overwrite it")
                              .arg(m_path, why);
        if (QFile::exists(logPath()))
            setAside(logPath()); // its changes apply to the damaged snapshot only
        return out;
    }

    m_seq = out.json.take(SeqKey).toInteger();
    QFile log(logPath());
    if (!log.open(QIODevice::ReadOnly))
        return out;
    const QByteArray bytes = log.readAll();
    log.close();

    // The journal's documents are gathered apart and put back once, so that
    // replaying costs the size of the log, not the log times the journal.
    QJsonObject journal = out.json.value(QStringLiteral("journal")).toObject();
    QJsonArray entries = journal.take(QStringLiteral("entries")).toArray();
    qsizetype pos = 0;
    int lineNo = 0;
    while (pos < bytes.size()) {
        const qsizetype eol = bytes.indexOf('\n', pos);
        const bool last = eol < 0;
        const QByteArray line = bytes.mid(pos, last ? -1 : eol - pos);
        pos = last ? bytes.size() : eol + 1;
        ++lineNo;
        QJsonParseError err;
        const QJsonDocument doc = QJsonDocument::fromJson(line, &err);
        const QJsonObject rec = doc.object();
        if (err.error != QJsonParseError::NoError || !doc.isObject() || !rec.value(QStringLiteral("n")).isDouble()) {
            if (last)
                break; // cut short by a kill while writing: never answered
            const QString aside = setAside(logPath());
            out.message = QStringLiteral("the state log %1 is damaged at line %2; the memory is as it was before "
                                         "that line, and the log was kept as %3")
                              .arg(logPath()).arg(lineNo).arg(QFileInfo(aside).fileName());
            break;
        }
        const qint64 n = rec.value(QStringLiteral("n")).toInteger();
        if (n <= m_seq)
            continue; // already in the snapshot
        m_seq = n;
        const QJsonObject set = rec.value(QStringLiteral("set")).toObject();
        for (auto it = set.begin(); it != set.end(); ++it) {
            if (it.key() == QLatin1String("journal")) {
                journal = it.value().toObject();
                journal.remove(QStringLiteral("entries"));
            } else {
                out.json.insert(it.key(), it.value());
            }
        }
        if (rec.contains(QStringLiteral("entries"))) {
            const qsizetype from = qBound<qsizetype>(0, rec.value(QStringLiteral("from")).toInteger(), entries.size());
            if (from == 0)
                entries = QJsonArray();
            while (entries.size() > from)
                entries.removeLast();
            for (const QJsonValue &e : rec.value(QStringLiteral("entries")).toArray())
                entries.append(e);
        }
        if (rec.contains(QStringLiteral("closures"))) {
            // Rare (a closure each day): the fiscal memory is taken out and put back.
            QJsonArray closures = out.json.value(QStringLiteral("fiscalMemory")).toArray();
            const qsizetype from =
                qBound<qsizetype>(0, rec.value(QStringLiteral("closuresFrom")).toInteger(), closures.size());
            while (closures.size() > from)
                closures.removeLast();
            for (const QJsonValue &z : rec.value(QStringLiteral("closures")).toArray())
                closures.append(z);
            out.json.insert(QStringLiteral("fiscalMemory"), closures);
        }
        ++out.replayed;
    }
    journal.insert(QStringLiteral("entries"), entries);
    out.json.insert(QStringLiteral("journal"), journal);
    m_logBytes = bytes.size();
    return out;
}

bool StateFile::save(const QJsonObject &json, QString *error) const
{
    return save(json, 0, {}, error);
}

bool StateFile::save(const QJsonObject &fields, qsizetype entries, const std::function<QJsonObject(qsizetype)> &entry,
                     QString *error) const
{
    auto fail = [error](const QString &why) {
        if (error)
            *error = why;
        return false;
    };
    QSaveFile file(m_path);
    if (!file.open(QIODevice::WriteOnly))
        return fail(file.errorString());
    QJsonObject head = fields;
    head.insert(SeqKey, m_seq);
    QByteArray bytes;
    qint64 written = 0;
    auto put = [&](const QByteArray &b) {
        written += b.size();
        return file.write(b) == b.size();
    };
    bool ok = true;
    if (!entry) {
        bytes = QJsonDocument(head).toJson(QJsonDocument::Compact);
        ok = put(bytes);
    } else {
        // The documents go where an empty list stands: a key followed by
        // ":[]" is a member, never text inside a string (its quotes would be
        // escaped), and only the journal has one named "entries".
        QJsonObject journal = head.value(QStringLiteral("journal")).toObject();
        journal.insert(QStringLiteral("entries"), QJsonArray());
        head.insert(QStringLiteral("journal"), journal);
        bytes = QJsonDocument(head).toJson(QJsonDocument::Compact);
        const QByteArray mark = "\"entries\":[";
        const qsizetype at = bytes.indexOf(mark + ']') + mark.size();
        ok = put(bytes.left(at));
        for (qsizetype i = 0; ok && i < entries; ++i)
            ok = put((i ? "," : "") + QJsonDocument(entry(i)).toJson(QJsonDocument::Compact));
        ok = ok && put(bytes.mid(at));
    }
    if (!ok) {
        const QString why = file.errorString();
        file.cancelWriting();
        return fail(why);
    }
    if (!file.commit())
        return fail(file.errorString());
    m_snapshotBytes = written;
    // The snapshot holds every record now; a kill before the log is emptied
    // costs nothing, the records' numbers say they are in it.
    m_log.close();
    QFile log(logPath());
    if (log.exists() && !log.resize(0))
        return fail(QStringLiteral("the log %1 could not be emptied: %2").arg(logPath(), log.errorString()));
    m_logBytes = 0;
    return true;
}

bool StateFile::openLog(QString *error) const
{
    if (m_log.isOpen())
        return true;
    m_log.setFileName(logPath());
    // Unbuffered: each record is one write(2), in the kernel's hands (and
    // safe from a kill of this process) when append() returns.
    if (!m_log.open(QIODevice::WriteOnly | QIODevice::Append | QIODevice::Unbuffered)) {
        if (error)
            *error = m_log.errorString();
        return false;
    }
    return true;
}

bool StateFile::append(QJsonObject record, QString *error) const
{
    if (!openLog(error))
        return false;
    record.insert(QStringLiteral("n"), m_seq + 1);
    QByteArray line = QJsonDocument(record).toJson(QJsonDocument::Compact);
    line += '\n';
    if (m_log.write(line) != line.size()) {
        if (error)
            *error = m_log.errorString();
        // A partial line would hide the records after it: cut it off.
        m_log.close();
        QFile log(logPath());
        log.resize(m_logBytes);
        return false;
    }
    ++m_seq;
    m_logBytes += line.size();
    return true;
}
