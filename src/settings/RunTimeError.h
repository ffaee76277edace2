// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <stdexcept>

// A failure that ends the run: a conversion of text that is no number, an
// overflow, an invalid argument where the program does not test first, a
// file that cannot be written. The top level shows "Errore di run-time" with
// the description and ends the process with a non-zero status.
class RunTimeError : public std::runtime_error
{
public:
    enum Code {
        InvalidArgument = 5,
        Overflow = 6,
        TypeMismatch = 13,
        FileNotFound = 53,
        PathFileAccess = 75,
        ObjectNotSet = 91,
    };

    RunTimeError(Code code, const QString &description)
        : std::runtime_error(description.toStdString()), m_code(code), m_description(description) {}

    static RunTimeError overflow() { return {Overflow, QStringLiteral("Overflow")}; }
    static RunTimeError typeMismatch() { return {TypeMismatch, QStringLiteral("Tipo non corrispondente")}; }
    static RunTimeError invalidArgument() { return {InvalidArgument, QStringLiteral("Chiamata di routine o argomento non validi")}; }
    static RunTimeError fileNotFound(const QString &path) { return {FileNotFound, QStringLiteral("File non trovato: %1").arg(path)}; }
    // A file that cannot be written, created or deleted; reason is the system's own word for it.
    static RunTimeError pathFileAccess(const QString &path, const QString &reason)
    {
        return {PathFileAccess, QStringLiteral("Errore di accesso al percorso/file: %1 (%2)").arg(path, reason)};
    }
    static RunTimeError objectNotSet() { return {ObjectNotSet, QStringLiteral("Variabile oggetto non impostata")}; }

    Code code() const { return m_code; }
    QString description() const { return m_description; }

private:
    Code m_code;
    QString m_description;
};
