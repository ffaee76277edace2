// SPDX-License-Identifier: GPL-3.0-or-later
#include "LogClass.h"

#include "RunTimeError.h"
#include "Cp1252.h"

#include <QDir>
#include <QFile>

LogClass::LogClass() = default;

LogClass::~LogClass() = default; // closes the file

void LogClass::Add(const QString &text)
{
    if (!m_stream)
        openForAppend();
    // The files go to technicians, who open them with whatever editor is at
    // hand, mostly on Windows: single-byte Windows-1252, the page the printer
    // itself speaks, with CR-LF line ends, whatever system wrote them.
    const QByteArray line = Cp1252::encode(text) + "\r\n";
    if (m_stream->write(line) != line.size() || !m_stream->flush())
        throw RunTimeError::pathFileAccess(QDir::toNativeSeparators(FileName), m_stream->errorString());
}

void LogClass::Reset()
{
    m_stream.reset();
    if (!QFile::exists(FileName))
        throw RunTimeError::fileNotFound(QDir::toNativeSeparators(FileName));
    QFile file(FileName);
    if (!file.remove())
        throw RunTimeError::pathFileAccess(QDir::toNativeSeparators(FileName), file.errorString());
    openForAppend();
}

void LogClass::openForAppend()
{
    auto file = std::make_unique<QFile>(FileName);
    if (!file->open(QIODevice::WriteOnly | QIODevice::Append))
        throw RunTimeError::pathFileAccess(QDir::toNativeSeparators(FileName), file->errorString());
    m_stream = std::move(file);
}
