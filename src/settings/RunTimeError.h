#pragma once

#include <QString>
#include <stdexcept>

// A failure that ends the run: a conversion of text that is no number, an
// overflow, an invalid argument where the program does not test first. The
// top level shows "Errore di run-time" with the description and ends the
// process with a non-zero status.
class RunTimeError : public std::runtime_error
{
public:
    enum Code { InvalidArgument = 5, Overflow = 6, TypeMismatch = 13, FileNotFound = 53 };

    RunTimeError(Code code, const QString &description)
        : std::runtime_error(description.toStdString()), m_code(code), m_description(description) {}

    static RunTimeError overflow() { return {Overflow, QStringLiteral("Overflow")}; }
    static RunTimeError typeMismatch() { return {TypeMismatch, QStringLiteral("Tipo non corrispondente")}; }
    static RunTimeError invalidArgument() { return {InvalidArgument, QStringLiteral("Chiamata di routine o argomento non validi")}; }

    Code code() const { return m_code; }
    QString description() const { return m_description; }

private:
    Code m_code;
    QString m_description;
};
