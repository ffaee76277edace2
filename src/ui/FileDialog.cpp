// SPDX-License-Identifier: GPL-3.0-or-later
#include "FileDialog.h"

#include <QFileDialog>

namespace {
struct Recorder
{
    bool on = false;
    QList<std::optional<QString>> answers;
    QList<FileDialog::Asked> asked;
};

Recorder &recorder()
{
    static Recorder r;
    return r;
}

std::optional<QString> answer(const FileDialog::Asked &asked)
{
    Recorder &r = recorder();
    r.asked.append(asked);
    if (r.answers.isEmpty())
        return std::nullopt;
    return r.answers.takeFirst();
}
}

std::optional<QString> FileDialog::open(QWidget *parent, const QString &caption, const QString &folder,
                                        const QString &filter, const QString &selectedFilter)
{
    if (recorder().on)
        return answer({false, caption, folder, filter, selectedFilter});
    QString selected = selectedFilter;
    const QString path = QFileDialog::getOpenFileName(parent, caption, folder, filter,
                                                      selected.isEmpty() ? nullptr : &selected);
    if (path.isEmpty())
        return std::nullopt;
    return path;
}

std::optional<QString> FileDialog::save(QWidget *parent, const QString &caption, const QString &proposed,
                                        const QString &filter, Existing existing)
{
    const bool ask = existing == Existing::Ask;
    if (recorder().on)
        return answer({true, caption, proposed, filter, QString(), ask});
    const QString path = QFileDialog::getSaveFileName(parent, caption, proposed, filter, nullptr,
                                                      ask ? QFileDialog::Options() : QFileDialog::DontConfirmOverwrite);
    if (path.isEmpty())
        return std::nullopt;
    return path;
}

void FileDialog::startRecording()
{
    recorder() = Recorder{};
    recorder().on = true;
}

void FileDialog::stopRecording()
{
    recorder() = Recorder{};
}

void FileDialog::queueAnswer(const std::optional<QString> &answer)
{
    recorder().answers.append(answer);
}

QList<FileDialog::Asked> FileDialog::asked()
{
    return recorder().asked;
}
