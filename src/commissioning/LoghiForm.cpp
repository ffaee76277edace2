// SPDX-License-Identifier: GPL-3.0-or-later
#include "LoghiForm.h"

#include "LogoTransfer.h"
#include "printer/KelvoFPControl.h"
#include "printer/PrinterIdentity.h"
#include "settings/Conversions.h"
#include "settings/ProgramFolder.h"
#include "settings/RunTimeError.h"
#include "ui/MsgBox.h"
#include "ui/Named.h"
#include "ui/ReportResult.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QDir>
#include <QEvent>
#include <QFontDatabase>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QtMath>
#include <QVBoxLayout>

namespace {
const QString kSaveFailed = QStringLiteral("Programmazione logo non riuscita!");

QListWidget *newIconList(QWidget *parent, const char *name)
{
    auto *list = named(new QListWidget(parent), name);
    list->setViewMode(QListView::IconMode);
    list->setMovement(QListView::Static);
    list->setResizeMode(QListView::Adjust);
    list->setSelectionMode(QAbstractItemView::SingleSelection);
    list->setIconSize(QSize(96, 24));
    list->setSpacing(4);
    list->setMinimumWidth(260);
    return list;
}

// The logos are one-bit pictures whose every dot counts: they are shown
// scaled by a whole factor of the screen's pixels, without smoothing, so that
// each dot of the logo becomes a square of whole screen pixels.
int wholeFactor(qreal devicePixelRatio)
{
    return qMax(1, int(devicePixelRatio));
}

QPixmap dotForDot(const QPixmap &image, qreal devicePixelRatio)
{
    const int k = wholeFactor(devicePixelRatio);
    QPixmap scaled = image.scaled(image.size() * k, Qt::IgnoreAspectRatio, Qt::FastTransformation);
    scaled.setDevicePixelRatio(devicePixelRatio);
    return scaled;
}

QLabel *newPicture(QWidget *parent, const char *name)
{
    auto *picture = named(new QLabel(parent), name);
    picture->setAlignment(Qt::AlignCenter);
    picture->setMinimumSize(384, 96);
    picture->setFrameShape(QFrame::StyledPanel);
    return picture;
}
}

LoghiForm::LoghiForm(QWidget *parent) : QDialog(parent)
{
    setObjectName(QStringLiteral("LoghiForm"));
    setWindowTitle(QStringLiteral("Scelta loghi"));

    const QString folder = QDir(ProgramFolder()).filePath(QStringLiteral("LoghiStandard"));
    txtPath = named(new QLineEdit(this), "txtPath");
    txtPath->setReadOnly(true);
    txtPath->setFocusPolicy(Qt::ClickFocus); // a note to read, not where the work starts
    chkHeader = named(new QCheckBox(QStringLiteral("Intestazione scontrino"), this), "chkHeader");
    chkFooter = named(new QCheckBox(QStringLiteral("Fine scontrino"), this), "chkFooter");
    ListViewHeader = newIconList(this, "ListViewHeader");
    ListViewFooter = newIconList(this, "ListViewFooter");
    PictureHeader = newPicture(this, "PictureHeader");
    PictureFooter = newPicture(this, "PictureFooter");
    lblPrev = named(new QLabel(QStringLiteral("Esempio scontrino"), this), "lblPrev");
    Text1 = named(new QPlainTextEdit(this), "Text1");
    Text1->setReadOnly(true);
    Text1->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    Text1->setPlainText(QStringLiteral("\nRep1            3,50\nRep2            1,20\n\nTOTALE        4,70\n"));
    Text1->setFixedHeight(110);
    lblLarg = named(new QLabel(QStringLiteral("Larghezza scontrino"), this), "lblLarg");
    ComboLarg = named(new QComboBox(this), "ComboLarg");
    ComboLarg->addItems({QStringLiteral("80 mm"), QStringLiteral("60 mm"), QStringLiteral("58 mm")});
    btnSave = named(new QPushButton(QStringLiteral("APPLICA"), this), "btnSave");
    btnOK = named(new QPushButton(QStringLiteral("ESCI"), this), "btnOK");

    auto *lists = new QVBoxLayout;
    lists->addWidget(chkHeader);
    lists->addWidget(ListViewHeader);
    lists->addWidget(chkFooter);
    lists->addWidget(ListViewFooter);
    auto *sample = new QVBoxLayout;
    sample->addWidget(lblPrev);
    sample->addWidget(PictureHeader);
    sample->addWidget(Text1);
    sample->addWidget(PictureFooter);
    auto *width = new QHBoxLayout;
    width->addWidget(lblLarg);
    width->addWidget(ComboLarg);
    width->addStretch();
    sample->addLayout(width);
    sample->addStretch();
    auto *top = new QHBoxLayout;
    top->addLayout(lists, 1);
    top->addLayout(sample);
    auto *buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(btnSave);
    buttons->addWidget(btnOK);
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(txtPath);
    layout->addLayout(top);
    layout->addLayout(buttons);
    resize(900, 600);

    connect(chkHeader, &QCheckBox::toggled, this, &LoghiForm::chkHeader_Click);
    connect(chkFooter, &QCheckBox::toggled, this, &LoghiForm::chkFooter_Click);
    connect(btnSave, &QPushButton::clicked, this, &LoghiForm::btnSave_Click);
    connect(btnOK, &QPushButton::clicked, this, &QDialog::accept);
    for (QListWidget *list : {ListViewHeader, ListViewFooter}) {
        list->installEventFilter(this);
        list->viewport()->installEventFilter(this);
    }

    // Load
    txtPath->setText(QStringLiteral("I loghi standard sono nella cartella ") + QDir::toNativeSeparators(folder));
    ComboLarg->setCurrentIndex(0);
    File1.Path = folder;
    File1.Pattern = QStringLiteral("*.bmp");
    File1.Refresh();
    if (File1.ListCount() > 0)
        LoadPictures();
    chkFooter_Click();
    chkHeader_Click();
}

void LoghiForm::LoadPictures()
{
    // A picture that cannot be loaded keeps the one before it, so that image
    // i stays paired with file i. Only a first picture that cannot be loaded
    // breaks the pairing, and the run ends on it.
    QPixmap picture;
    for (int i = 1; i <= File1.ListCount(); ++i) {
        QPixmap loaded;
        if (loaded.load(File1.FullPath(i - 1)))
            picture = loaded;
        if (picture.isNull())
            continue;
        ImageList1.images.append(picture);
        if (ImageList1.images.size() < i)
            throw RunTimeError::invalidArgument();
        ImageList1.tags.append(File1.List(i - 1).left(2));
    }
    const qreal dpr = devicePixelRatioF();
    const int k = wholeFactor(dpr);
    for (QListWidget *list : {ListViewHeader, ListViewFooter}) {
        // Pictures only: an item with a caption, even an empty one, would
        // draw the highlight of that caption as a grey stub under the logo.
        for (const QPixmap &image : std::as_const(ImageList1.images)) {
            auto *item = new QListWidgetItem(list);
            // Whole-factor pixels asked for at exactly their size: the icon
            // hands them over unscaled.
            item->setIcon(QIcon(image.scaled(image.size() * k, Qt::IgnoreAspectRatio, Qt::FastTransformation)));
        }
        if (!ImageList1.images.isEmpty()) {
            const QSize dots = ImageList1.images.first().size() * k;
            list->setIconSize(QSize(qCeil(dots.width() / dpr), qCeil(dots.height() / dpr)));
            list->setMinimumWidth(list->iconSize().width() + 40);
        }
        // Highlighted, not chosen: choosing takes a click or a key.
        if (list->count() > 0)
            list->setCurrentRow(0);
    }
    headerFile.clear();
    footerFile.clear();
}

void LoghiForm::chkHeader_Click()
{
    ListViewHeader->setEnabled(chkHeader->isChecked());
    if (!chkHeader->isChecked()) {
        headerFile.clear();
        PictureHeader->clear();
    }
}

void LoghiForm::chkFooter_Click()
{
    ListViewFooter->setEnabled(chkFooter->isChecked());
    if (!chkFooter->isChecked()) {
        footerFile.clear();
        PictureFooter->clear();
    }
}

bool LoghiForm::eventFilter(QObject *watched, QEvent *event)
{
    for (QListWidget *list : {ListViewHeader, ListViewFooter}) {
        if ((watched == list->viewport() && event->type() == QEvent::MouseButtonRelease)
            || (watched == list && event->type() == QEvent::KeyRelease))
            LogoClick(list);
    }
    return QDialog::eventFilter(watched, event);
}

void LoghiForm::LogoClick(QListWidget *list)
{
    const int index = list->currentRow();
    if (list->count() == 0 || index < 0)
        return;
    const QString file = File1.FullPath(index);
    const QPixmap &image = ImageList1.images.at(index);
    if (list == ListViewHeader) {
        headerFile = file;
        PictureHeader->setPixmap(dotForDot(image, devicePixelRatioF()));
    } else {
        footerFile = file;
        PictureFooter->setPixmap(dotForDot(image, devicePixelRatioF()));
    }
}

void LoghiForm::btnSave_Click()
{
    // The transfer gives the screen its turns; a second press meanwhile
    // would start a second job inside the first one.
    if (m_saving)
        return;
    LogoTransfer::SavingScope saving(m_saving);
    const int32_t model = GetPrinterModel();
    SaveOne(chkHeader, ListViewHeader, headerFile, 9, QStringLiteral("Programmazione intestazione scontrino ok!"), model);
    SaveOne(chkFooter, ListViewFooter, footerFile, 10, QStringLiteral("Programmazione fine scontrino ok!"), model);
}

void LoghiForm::SaveOne(QCheckBox *box, QListWidget *list, QString &file, int16_t parameter, const QString &done,
                        int32_t model)
{
    int16_t number = parameter;
    if (!box->isChecked()) {
        int16_t none = 0;
        ProgFlag(number, none);
        return;
    }
    if (file.isEmpty())
        return;
    // The rewritten name stays: a second APPLICA without a new choice cuts
    // the picture's ending off the file's name and gives a name that no
    // file has, and the printer then refuses the empty logo.
    if (model == 0 || model == 1)
        file = file.left(file.size() - 4)
               + (ComboLarg->currentIndex() == 0 ? QStringLiteral("_80.bin") : QStringLiteral("_60.bin"));
    else if (model == 2)
        file = File1.Path + QStringLiteral("/KX81_loghi.tlg");
    int16_t result = 0;
    SaveLogo(file, result);
    if (result != 0) {
        MsgBox::show(kSaveFailed);
        gFPControl->CloseRawChannel(1);
    } else {
        MsgBox::show(done);
    }
    // Written even after a failed transfer: the number chosen is kept.
    int16_t value = Conv::ToInteger(ImageList1.tags.value(list->currentRow()));
    ProgFlag(number, value);
}

void LoghiForm::SaveLogo(QString &fileName, int16_t &result)
{
    result = LogoTransfer::SendLogo(fileName);
}

void LoghiForm::ProgFlag(int16_t &number, int16_t &value)
{
    if (gFPControl->Busy())
        return;
    int16_t result = gFPControl->WriteParam(number, value);
    if (result != 0)
        ReportResult(result);
}

QString StandardLogoFile(int16_t number)
{
    int16_t parameter = 12;
    bool narrow = false;
    if (gFPControl->ReadParam(parameter) == 0)
        narrow = gFPControl->ParamValue() != 0;
    return LogoTransfer::StandardLogoPath(number, narrow);
}
