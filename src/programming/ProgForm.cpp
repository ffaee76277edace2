// SPDX-License-Identifier: GPL-3.0-or-later
#include "ProgForm.h"

#include "GridView.h"
#include "ProgrammingGridModel.h"
#include "ProgrammingTables.h"

#include "commissioning/InstallFlagForm.h"
#include "printer/KelvoFPControl.h"
#include "printer/PrinterIdentity.h"
#include "settings/Conversions.h"
#include "settings/XmlSettings.h"
#include "ui/DialogKeys.h"
#include "ui/MsgBox.h"
#include "ui/Named.h"
#include "ui/ReportResult.h"

#include <QApplication>
#include <QComboBox>
#include <QEvent>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QItemSelectionModel>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTableView>
#include <QVBoxLayout>

bool ProgForm::WizardMode = false;
int16_t ProgForm::TableKind = 0;

namespace {

constexpr int kDescriptionLength = 20;
constexpr int16_t kVatKind = 3;
constexpr int16_t kDepartmentKind = 4;

// Which table column each field of the form shows and sends, per TableKind
// (-1: the field is not used), the captions, and the form's height in twips
// (0 keeps the height as designed). The departments' lists come on top.
struct KindFields
{
    int desc;
    int limite;
    int percOpr;
    const char *descCaption;
    const char *limiteCaption;
    int heightTwips;
};
const KindFields kFields[kEditorKinds] = {
    {1, -1, -1, "descrizione:", "limite prezzo:", 0},
    {1, -1, -1, "descrizione:", "limite prezzo:", 0},
    {1, 2, -1, "descrizione:", "Valore", 4045},
    {1, -1, -1, "Valore", "limite prezzo:", 3975},
    {1, 2, -1, "descrizione:", "limite prezzo:", 5715},
    {1, 2, 3, "descrizione:", "password", 4415},
    // The preset amount sits in txtDesc, under the label of a description.
    {2, -1, -1, "descrizione:", "limite prezzo:", 0},
};
constexpr int kDesignedHeightTwips = 4000;

const KindFields *fieldsOf(int16_t kind)
{
    return kind >= 0 && kind < kEditorKinds ? &kFields[kind] : nullptr;
}

struct WaitCursor
{
    WaitCursor() { QApplication::setOverrideCursor(Qt::WaitCursor); }
    ~WaitCursor() { QApplication::restoreOverrideCursor(); }
};

// A text the caller found numeric still has to fit the value the printer
// takes; one that does not is refused with a message instead of ending the run.
bool fitsType(CellType type, const QString &text)
{
    switch (type) {
    case CellType::Integer: return CellInteger(text).has_value();
    case CellType::Long: return CellLong(text).has_value();
    case CellType::Single: return CellSingle(text).has_value();
    case CellType::Money: return CellMoney(text).has_value();
    case CellType::Text: return true;
    }
    return true;
}

QComboBox *numberList(const char *name, QWidget *parent)
{
    auto *combo = named(new QComboBox(parent), name);
    for (int i = 0; i <= 10; ++i)
        combo->addItem(QString::number(i));
    return combo;
}

} // namespace

ProgForm::ProgForm(QWidget *parent) : QDialog(parent)
{
    setObjectName(QStringLiteral("ProgForm"));
    DialogKeys::ignoreEscape(this, WizardMode);
    setWindowTitle(QStringLiteral("Programmazione"));

    lblProg = named(new QLabel(this), "lblProg");
    QFont big = lblProg->font();
    big.setBold(true);
    lblProg->setFont(big);
    gridModel = new ProgrammingGridModel(this);
    gridProg = MakeGridView("gridProg", gridModel, this);

    lblDesc = named(new QLabel(QStringLiteral("descrizione:"), this), "lblDesc");
    txtDesc = named(new QLineEdit(this), "txtDesc");
    lblLimite = named(new QLabel(QStringLiteral("limite prezzo:"), this), "lblLimite");
    txtLimite = named(new QLineEdit(this), "txtLimite");
    lblPercOpr = named(new QLabel(QStringLiteral("commissione:"), this), "lblPercOpr");
    txtPercOpr = named(new QLineEdit(this), "txtPercOpr");
    lblIva = named(new QLabel(QStringLiteral("iva (%):"), this), "lblIva");
    comboIVA = named(new QComboBox(this), "comboIVA");
    lblScontRiass = named(new QLabel(QStringLiteral("associa a scontrino gruppo stampa per ritiro prodotti (0 disabilita):"), this),
                          "lblScontRiass");
    comboScontRiass = numberList("comboScontRiass", this);
    lblGrpMerc = named(new QLabel(QStringLiteral("associa gruppo merceologico (0 disabilita):"), this), "lblGrpMerc");
    comboGrpMerc = numberList("comboGrpMerc", this);
    btnIva = named(new QPushButton(QStringLiteral("Modifica valori IVA predefiniti"), this), "btnIva");
    btnAdd = named(new QPushButton(QStringLiteral("Memorizza riga corrente"), this), "btnAdd");
    btnOK = named(new QPushButton(QStringLiteral("OK"), this), "btnOK");

    auto *fields = new QFormLayout;
    fields->addRow(lblDesc, txtDesc);
    fields->addRow(lblLimite, txtLimite);
    fields->addRow(lblPercOpr, txtPercOpr);
    fields->addRow(lblIva, comboIVA);
    fields->addRow(lblScontRiass, comboScontRiass);
    fields->addRow(lblGrpMerc, comboGrpMerc);
    auto *buttons = new QHBoxLayout;
    buttons->addWidget(btnIva);
    buttons->addStretch();
    buttons->addWidget(btnAdd);
    buttons->addWidget(btnOK);
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(lblProg);
    layout->addWidget(gridProg, 1);
    layout->addLayout(fields);
    layout->addLayout(buttons);
    setMinimumWidth(TwipsToPixels(7200, logicalDpiX()));

    txtDesc->installEventFilter(this);
    // A reset replaces the selection model's contents, not the model itself.
    connect(gridProg->selectionModel(), &QItemSelectionModel::currentRowChanged, this, [this] {
        if (!m_loading)
            gridProg_SelChange();
    });
    // Like the flex grid, the grid always has a current row: after every fill
    // it is row 1, set quietly, without a selection and without a read. So
    // the focus coming to the grid (which would give a grid without a
    // current row one) reads nothing; only the load's own selection and a
    // real change of row do.
    connect(gridModel, &QAbstractItemModel::modelReset, this, [this] {
        if (gridModel->rowCount() == 0)
            return;
        const bool loading = m_loading;
        m_loading = true;
        gridProg->selectionModel()->setCurrentIndex(gridModel->index(0, 0), QItemSelectionModel::NoUpdate);
        m_loading = loading;
    });
    connect(gridProg, &QTableView::clicked, this, [this](const QModelIndex &i) { gridProg_Click(i.column()); });
    connect(btnAdd, &QPushButton::clicked, this, &ProgForm::btnAdd_Click);
    connect(btnOK, &QPushButton::clicked, this, &ProgForm::btnOK_Click);
    connect(btnIva, &QPushButton::clicked, this, &ProgForm::btnIva_Click);

    load();
}

ProgForm::~ProgForm() = default;

void ProgForm::load()
{
    btnOK->setText(WizardMode ? QStringLiteral("AVANTI") : QStringLiteral("OK"));
    // In the commissioning the reading is watched; the opener's modal show
    // brings the form back afterwards. The dialog centres itself on showing.
    if (WizardMode)
        show();
    {
        WaitCursor wait;
        settings = std::make_unique<XmlSettings>();
        settings->OpenSettings(QStringLiteral("KX90Prog") + GetMatricola(), QString(), QString());

        const EditorView *view = EditorViewOf(TableKind);
        lblProg->setText(view ? view->caption : QString());
        SizeAndUnhideForm();
        const int16_t result = loadTable();
        if (TableKind == kDepartmentKind) {
            comboGrpMerc->setCurrentIndex(0);
            comboIVA->setCurrentIndex(comboIVA->count() > 0 ? 0 : -1);
            comboScontRiass->setCurrentIndex(0);
        }
        // Only the cards' and the operators' loaders tell their result here.
        const bool loaded = (TableKind == 0 || TableKind == 5) ? result == 0 : true;
        if (loaded && gridModel->grid().rows() >= 2)
            selectRow(1);
        if (WizardMode)
            hide();
    }
}

int ProgForm::exec()
{
    int result;
    m_inExec = true;
    do {
        m_reshow = false;
        result = QDialog::exec();
        if (m_ratesTrip && !m_reshow) {
            // The rates have closed: the departments come back, loaded anew.
            m_ratesTrip = false;
            TableKind = kDepartmentKind;
            load();
            m_reshow = true;
        }
    } while (m_reshow);
    m_inExec = false;
    return result;
}

void ProgForm::SizeAndUnhideForm()
{
    const KindFields *f = fieldsOf(TableKind);
    const bool departments = TableKind == kDepartmentKind;
    lblDesc->setText(QString::fromUtf8(f ? f->descCaption : "descrizione:"));
    lblLimite->setText(QString::fromUtf8(f ? f->limiteCaption : "limite prezzo:"));
    for (QWidget *w : {static_cast<QWidget *>(lblDesc), static_cast<QWidget *>(txtDesc)})
        w->setVisible(f != nullptr);
    for (QWidget *w : {static_cast<QWidget *>(lblLimite), static_cast<QWidget *>(txtLimite)})
        w->setVisible(f && f->limite >= 0);
    for (QWidget *w : {static_cast<QWidget *>(lblPercOpr), static_cast<QWidget *>(txtPercOpr)})
        w->setVisible(f && f->percOpr >= 0);
    for (QWidget *w : std::initializer_list<QWidget *>{lblIva, comboIVA, lblScontRiass, comboScontRiass, lblGrpMerc,
                                                       comboGrpMerc, btnIva})
        w->setVisible(departments);
    // The buttons follow the fields in the layout, so only the height is set.
    const int twips = f && f->heightTwips > 0 ? f->heightTwips : kDesignedHeightTwips;
    resize(width(), TwipsToPixels(twips, logicalDpiY()));
}

int16_t ProgForm::loadTable()
{
    const EditorView *view = EditorViewOf(TableKind);
    if (!view) {
        gridModel->fill([](ProgrammingGrid &g) { g = ProgrammingGrid(); });
        return 0;
    }
    ProgrammingGrid grid;
    SetupGrid(grid, *view);
    if (view->kind == kDepartmentKind)
        loadIvaCombo();

    // The rows are gathered first and shown in one go, so that a table of
    // hundreds of departments is drawn once and a refusal is reported over
    // the rows already read.
    const ProgrammingTable &table = view->source();
    const RowAccess &access = view->rowAccess();
    const int16_t last = view->lastRow();
    grid.setRows(last + 1);
    int16_t result = 0;
    for (int n = 1; n <= last; ++n) {
        // While the control is busy the row takes what the properties still hold.
        if (!gFPControl->Busy()) {
            result = access.read(*gFPControl, int16_t(n));
            if (result != 0)
                break;
        }
        QStringList cells(table.columns.size());
        access.fetch(*gFPControl, int16_t(n), cells);
        for (int c = 0; c < view->columns.size(); ++c) {
            const EditorColumn &col = view->columns[c];
            QString text = cells.value(col.source);
            grid.setText(n, c, col.trimmed ? text.trimmed() : text);
        }
        if (view->kind == kDepartmentKind) // the rate, not the row of the VAT table
            grid.setText(n, 3, comboIVA->itemText(gFPControl->RepartoIva() - 1));
        if (view->kind == kVatKind && n <= kVatRows)
            tassaValues[n - 1] = RoundRate(gFPControl->IvaAliquota());
    }
    gridModel->fill([&grid](ProgrammingGrid &g) { g = grid; });
    if (result != 0)
        ReportResult(result);
    return result;
}

void ProgForm::LoadTassa()
{
    const int16_t kind = TableKind;
    TableKind = kVatKind;
    loadTable();
    TableKind = kind;
}

void ProgForm::loadIvaCombo()
{
    comboIVA->clear();
    int16_t total = 0;
    for (int16_t n = 1; n <= kVatRows; ++n) {
        if (!gFPControl->Busy()) {
            int16_t index = n;
            int16_t result = gFPControl->ReadIva(index);
            if (result != 0) {
                ReportResult(result);
                break;
            }
        }
        const float rate = gFPControl->IvaAliquota();
        comboIVA->addItem(CellText(rate));
        total = RoundRate(double(rate) + total); // rounded at each step: 0,4 and 0,4 stay 0
    }
    if (total != 0)
        return;

    // An unprogrammed printer: the usual rates go into rows 1 to 3.
    for (const VatDefault &d : kVatDefaults) {
        if (!gFPControl->Busy())
            ReportResult(gFPControl->WriteIva(d.row, d.rate));
    }
    comboIVA->clear();
    for (int16_t n = 1; n <= kVatRows; ++n) {
        if (!gFPControl->Busy()) {
            int16_t index = n;
            gFPControl->ReadIva(index);
        }
        comboIVA->addItem(CellText(gFPControl->IvaAliquota()));
    }
}

int ProgForm::currentRow() const
{
    const QModelIndex current = gridProg->currentIndex();
    if (current.isValid())
        return ProgrammingGridModel::toGridRow(current.row());
    return gridModel->grid().rows() >= 2 ? 1 : 0;
}

void ProgForm::selectRow(int gridRow)
{
    const int viewRow = ProgrammingGridModel::toViewRow(gridRow);
    if (viewRow < 0 || viewRow >= gridModel->rowCount())
        return;
    m_loading = true;
    gridProg->setCurrentIndex(gridModel->index(viewRow, 0));
    gridProg->selectRow(viewRow);
    m_loading = false;
    gridProg_SelChange();
}

void ProgForm::gridProg_SelChange()
{
    const EditorView *view = EditorViewOf(TableKind);
    const KindFields *f = fieldsOf(TableKind);
    const int r = currentRow();
    if (!view || !f || r < 1)
        return;
    const RowAccess &access = view->rowAccess();
    if (!gFPControl->Busy()) {
        int16_t result = access.read(*gFPControl, int16_t(r));
        if (result != 0) {
            ReportResult(result);
            return; // the fields keep what they held
        }
    }
    QStringList cells(view->source().columns.size());
    access.fetch(*gFPControl, int16_t(r), cells);
    txtDesc->setText(cells.value(f->desc).trimmed());
    if (f->limite >= 0)
        txtLimite->setText(cells.value(f->limite).trimmed());
    if (f->percOpr >= 0)
        txtPercOpr->setText(cells.value(f->percOpr).trimmed());
    if (TableKind == kVatKind)
        lblDesc->setText(QStringLiteral("Valore"));
    if (TableKind == 2)
        lblLimite->setText(QStringLiteral("Valore"));
    if (TableKind == kDepartmentKind) {
        // No VAT row (0) shows the first rate.
        const int16_t iva = gFPControl->RepartoIva();
        comboIVA->setCurrentIndex(iva > 0 ? iva - 1 : 0);
        comboScontRiass->setCurrentIndex(gFPControl->RepartoScontRiass());
        comboGrpMerc->setCurrentIndex(gFPControl->RepartoGrpMerc());
    }
}

void ProgForm::gridProg_Click(int column)
{
    QWidget *target = nullptr;
    switch (TableKind) {
    case 0:
    case 1:
    case kVatKind:
    case 6:
        target = txtDesc;
        break;
    case 2:
        // Rows are selected whole, so the selection always ends at column 2.
        target = column == 1 ? txtDesc : txtLimite;
        break;
    case kDepartmentKind: {
        QWidget *byColumn[] = {nullptr, txtDesc, txtLimite, comboIVA, comboScontRiass, comboGrpMerc};
        target = column >= 0 && column < 6 ? byColumn[column] : nullptr;
        break;
    }
    case 5: {
        QWidget *byColumn[] = {nullptr, txtDesc, txtLimite, txtPercOpr};
        target = column >= 0 && column < 4 ? byColumn[column] : nullptr;
        break;
    }
    default:
        break;
    }
    if (!target)
        return;
    target->setFocus();
    if (auto *edit = qobject_cast<QLineEdit *>(target))
        edit->selectAll();
}

bool ProgForm::eventFilter(QObject *watched, QEvent *event)
{
    // Leaving the description keeps its first 20 characters, in every table.
    if (watched == txtDesc && event->type() == QEvent::FocusOut && txtDesc->text().size() > kDescriptionLength)
        txtDesc->setText(txtDesc->text().left(kDescriptionLength));
    return QDialog::eventFilter(watched, event);
}

void ProgForm::btnAdd_Click()
{
    const EditorView *view = EditorViewOf(TableKind);
    const KindFields *f = fieldsOf(TableKind);
    const int r = currentRow();
    if (!view || !f || r < 1)
        return;
    const ProgrammingTable &table = view->source();

    // The row as the table holds it, from the fields.
    QStringList cells(table.columns.size());
    cells[0] = QString::number(r);
    cells[f->desc] = txtDesc->text();
    if (f->limite >= 0)
        cells[f->limite] = txtLimite->text();
    if (f->percOpr >= 0)
        cells[f->percOpr] = txtPercOpr->text();
    if (TableKind == kDepartmentKind) {
        cells[3] = QString::number(comboIVA->currentIndex() + 1);
        cells[4] = QString::number(comboScontRiass->currentIndex());
        cells[5] = QString::number(comboGrpMerc->currentIndex());
    }

    // Fields that must hold numbers; one that does not makes the button do nothing.
    QList<int> numeric;
    if (TableKind == 2 || TableKind == kDepartmentKind)
        numeric = {f->limite};
    else if (TableKind == 5)
        numeric = {f->limite, f->percOpr};
    else if (TableKind == kVatKind || TableKind == 6)
        numeric = {f->desc};
    for (int c : numeric)
        if (!Conv::IsNumeric(cells[c]))
            return;
    for (int c : numeric) {
        if (!fitsType(table.columns[c].type, cells[c])) {
            MsgBox::show(QStringLiteral("Valore fuori dai limiti consentiti!"));
            return;
        }
    }

    int16_t result = 1;
    bool wrote = false;
    {
        WaitCursor wait;
        if (TableKind == kVatKind) {
            // A rate already among the first three is not stored again; the
            // fourth is left out of the comparison.
            const float rate = *CellSingle(cells[1]);
            bool present = false;
            for (int i = 0; i < kVatRows - 1; ++i)
                present = present || rate == float(tassaValues[i]);
            if (present) {
                MsgBox::show(QStringLiteral("Valore già presente!"));
                result = -1;
            } else if (!gFPControl->Busy()) {
                result = view->rowAccess().write(*gFPControl, int16_t(r), cells);
                wrote = true;
                if (result == 0) {
                    if (settings)
                        settings->SetValueAtt(QStringLiteral("InstallIva"), QStringLiteral("Iva%1").arg(r), rate);
                    LoadTassa();
                }
            }
        } else if (!gFPControl->Busy()) {
            result = view->rowAccess().write(*gFPControl, int16_t(r), cells);
            wrote = true;
            if (result == 0)
                loadTable();
        }
    }
    if (wrote && result != 0) {
        ReportResult(result); // the grid stays as it was
        return;
    }
    if (result == 0) {
        m_loading = true;
        gridProg->setCurrentIndex(gridModel->index(ProgrammingGridModel::toViewRow(r), 0));
        m_loading = false;
        gridProg_SelChange();
        MsgBox::show(QStringLiteral("Programmazione effettuata!"));
    }
}

int ProgForm::IvaRowOfRate(int rate) const
{
    for (int i = 0; i < comboIVA->count(); ++i) {
        const std::optional<float> item = CellSingle(comboIVA->itemText(i));
        if (item && *item == float(rate))
            return i + 1;
    }
    return 1;
}

void ProgForm::btnOK_Click()
{
    const ProgrammingGrid &grid = gridModel->grid();
    if (!settings) { // already closed: the form is on its way out
        accept();
        return;
    }
    if (TableKind == kVatKind) {
        for (int n = 1; n <= kVatRows; ++n)
            settings->SetValueAtt(QStringLiteral("InstallIva"), QStringLiteral("Iva%1").arg(n), grid.text(n, 1));
        settings->CloseSettings();
        settings.reset();
        accept();
        if (WizardMode) {
            WizardMode = true;
            TableKind = kDepartmentKind;
            ProgForm departments(parentWidget());
            departments.exec();
        }
        return;
    }
    if (TableKind == kDepartmentKind) {
        const QString section = QStringLiteral("InstallRep");
        const int16_t last = DepartmentsOnPrinter();
        // The first department without a description ends the list.
        for (int n = 1; n <= last && n < grid.rows() && !grid.isBlank(n, 1); ++n) {
            const QString k = QString::number(n);
            settings->SetValueAtt(section, QStringLiteral("Desc") + k, grid.text(n, 1));
            settings->SetValueAtt(section, QStringLiteral("Lim") + k, grid.text(n, 2));
            // A department without a VAT row shows no rate; it keeps row 0
            // rather than taking the first rate's row.
            const std::optional<int16_t> rate = CellInteger(grid.text(n, 3));
            settings->SetValueAtt(section, QStringLiteral("Iva") + k, rate ? IvaRowOfRate(*rate) : 0);
            settings->SetValueAtt(section, QStringLiteral("ScRias") + k, grid.text(n, 4));
            settings->SetValueAtt(section, QStringLiteral("GrpMerc") + k, grid.text(n, 5));
        }
        for (int i = 0; i < kVatRows; ++i)
            settings->SetValueAtt(QStringLiteral("InstallIva"), QStringLiteral("Iva%1").arg(i + 1), comboIVA->itemText(i));
        settings->CloseSettings();
        settings.reset();
        accept();
        if (WizardMode) {
            InstallFlagForm::StandaloneMode = false;
            InstallFlagForm next(parentWidget());
            next.exec();
        }
        return;
    }
    accept();
}

void ProgForm::btnIva_Click()
{
    if (TableKind != kDepartmentKind)
        return;
    // This form shows the rates as table 3, without a load of its own (so
    // no row is read), and comes back as the departments, loaded anew.
    hide();
    TableKind = kVatKind;
    if (const EditorView *view = EditorViewOf(TableKind))
        lblProg->setText(view->caption);
    SizeAndUnhideForm();
    LoadTassa();
    txtDesc->setText(gridModel->grid().text(1, 1));
    m_ratesTrip = true;
    if (m_inExec)
        m_reshow = true; // hiding has ended the showing; exec shows the rates
    else
        exec();
}
