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

std::optional<QString> answer(bool save, const QString &caption, const QString &folder, const QString &filter)
{
    Recorder &r = recorder();
    r.asked.append({save, caption, folder, filter});
    if (r.answers.isEmpty())
        return std::nullopt;
    return r.answers.takeFirst();
}
}

std::optional<QString> FileDialog::open(QWidget *parent, const QString &caption, const QString &folder,
                                        const QString &filter)
{
    if (recorder().on)
        return answer(false, caption, folder, filter);
    const QString path = QFileDialog::getOpenFileName(parent, caption, folder, filter);
    if (path.isEmpty())
        return std::nullopt;
    return path;
}

std::optional<QString> FileDialog::save(QWidget *parent, const QString &caption, const QString &proposed,
                                        const QString &filter)
{
    if (recorder().on)
        return answer(true, caption, proposed, filter);
    const QString path = QFileDialog::getSaveFileName(parent, caption, proposed, filter);
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
