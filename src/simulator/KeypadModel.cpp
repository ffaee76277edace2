// SPDX-License-Identifier: GPL-3.0-or-later
#include "KeypadModel.h"

#include "printer/KelvoFPControl.h"
#include "settings/Conversions.h"
#include "settings/LocaleValue.h"
#include "settings/RunTimeError.h"

bool KeypadModel::PaymentOpen = false;

namespace {

const QString kLocked = QStringLiteral("-TASTIERA BLOCCATA-");
const QString kNoSurcharge = QStringLiteral("Impostare il valore dell'aumento!");
const QString kNoDiscount = QStringLiteral("Impostare il valore del'abbuono!");
const QString kNoPercentDiscount = QStringLiteral("Impostare il valore dello sconto!");
const QString kNoCheque = QStringLiteral("Impostare il valore dell'assegno!");
// A figure of the twenty the display takes, but beyond what the control
// can carry: told here instead of ending the run.
const QString kTooLarge = QStringLiteral("Valore troppo grande: la cifra impostata non può essere inviata alla stampante.");

using Key = KeypadModel::Key;

int indexOf(Key key, Key first)
{
    return int(key) - int(first);
}

bool within(Key key, Key first, Key last)
{
    return int(key) >= int(first) && int(key) <= int(last);
}

} // namespace

KeypadModel::KeypadModel()
{
    DecimalSeparator = GetLocaleValue(LOCALE_SMONDECIMALSEP);
    if (DecimalSeparator.isEmpty())
        DecimalSeparator = QStringLiteral(",");
    Reset();
}

QString KeypadModel::departmentCaption(int index)
{
    return QStringLiteral("REP %1").arg(index + 1);
}

bool KeypadModel::shutByLock(Key key)
{
    return key != Key::CashDescription && key != Key::Lock && key != Key::Unlock;
}

std::optional<Key> KeypadModel::keyForTyping(int k, Qt::KeyboardModifiers modifiers)
{
    if (modifiers & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier))
        return std::nullopt;
    if (k >= Qt::Key_1 && k <= Qt::Key_9)
        return Key(int(Key::Digit1) + k - Qt::Key_1);
    if (k >= Qt::Key_F1 && k <= Qt::Key_F4)
        return Key(int(modifiers & Qt::ShiftModifier ? Key::Void1 : Key::Sale1) + k - Qt::Key_F1);
    switch (k) {
    case Qt::Key_0: return Key::Digit0;
    case Qt::Key_Comma:
    case Qt::Key_Period: return Key::Decimal;
    case Qt::Key_Asterisk:
    case Qt::Key_X: return Key::Multiply;
    case Qt::Key_Delete: return Key::Clear;
    case Qt::Key_Return:
    case Qt::Key_Enter: return Key::Cash;
    default: return std::nullopt;
    }
}

void KeypadModel::press(Key key)
{
    if (Locked && shutByLock(key))
        return;
    if (within(key, Key::Digit1, Key::Digit00))
        digit(indexOf(key, Key::Digit1));
    else if (within(key, Key::Sale1, Key::Sale4))
        sale(indexOf(key, Key::Sale1));
    else if (within(key, Key::Void1, Key::Void4))
        voidSale(indexOf(key, Key::Void1));
    else if (within(key, Key::ItemSurcharge, Key::TotalPercentDiscount)) {
        const int n = indexOf(key, Key::ItemSurcharge);
        const bool total = n >= 4, surcharge = n % 2 == 0, percent = n % 4 >= 2;
        adjust(total, surcharge, percent ? Adjustment::Percent : Adjustment::Amount,
               surcharge ? kNoSurcharge : percent ? kNoPercentDiscount : kNoDiscount);
    } else {
        switch (key) {
        case Key::Decimal: decimal(); break;
        case Key::Multiply: multiply(); break;
        case Key::Clear: Reset(); break;
        case Key::Cash: cash(); break;
        case Key::Cheque: cheque(); break;
        case Key::Card: card(); break;
        case Key::Ticket: ticket(); break;
        case Key::CashDescription: cashDescription(); break;
        case Key::Lock: lock(true); break;
        case Key::Unlock: lock(false); break;
        default: simple(key); break;
        }
    }
}

// --- Entry -----------------------------------------------------------------------

void KeypadModel::Reset()
{
    Display = QStringLiteral("0");
    Description.clear();
    Entry.clear();
    Quantity = 1.0;
    Price = 0;
    DecimalKeyed = false;
    DecimalDigits = 0;
    EntryPosted = false;
    // PaymentOpen stays: only a payment ends it.
}

QString KeypadModel::beforeX() const
{
    return Entry.left(Entry.indexOf(QLatin1Char('x')));
}

QString KeypadModel::afterX() const
{
    return Entry.mid(Entry.indexOf(QLatin1Char('x')) + 1);
}

void KeypadModel::digit(int index)
{
    const QString digits = index < 9 ? QString::number(index + 1) : index == 9 ? QStringLiteral("0") : QStringLiteral("00");
    if (EntryPosted)
        Reset();
    if (Display == QStringLiteral("0"))
        Display.clear();
    if (DecimalKeyed && DecimalDigits < 4)
        DecimalDigits += int16_t(digits.size());
    // The length is that of the entry before the key: 00 may reach 21.
    if (Entry.size() < 20 && DecimalDigits < 4)
        Display += digits;
    Entry = Display;
}

void KeypadModel::decimal()
{
    if (Entry.isEmpty() || DecimalKeyed)
        return;
    Entry += DecimalSeparator;
    Display = Entry;
    DecimalKeyed = true;
}

void KeypadModel::multiply()
{
    if (Entry.isEmpty() || holdsX())
        return;
    Quantity = Conv::ToDouble(Entry);
    Entry.clear();
    Display += QStringLiteral(" x ");
    DecimalKeyed = false;
    DecimalDigits = 0;
}

// --- Figures too large for the control ------------------------------------------------

void KeypadModel::tooLarge() const
{
    if (tell)
        tell(kTooLarge, true);
}

// Text that is no number at all stays a run-ending failure; only a figure
// too large for its type is caught and told.
template <typename T, typename F>
static std::optional<T> fitting(F convert, bool &overflow)
{
    try {
        return convert();
    } catch (const RunTimeError &e) {
        if (e.code() != RunTimeError::Overflow)
            throw;
    }
    overflow = true;
    return std::nullopt;
}

std::optional<Currency> KeypadModel::amountOf(const QString &text)
{
    bool overflow = false;
    const auto amount = fitting<Currency>([&] { return Conv::ToCurrency(text); }, overflow);
    if (overflow)
        tooLarge();
    return amount;
}

std::optional<Currency> KeypadModel::amountOf(double value)
{
    const std::optional<Currency> amount = Currency::fromDouble(value);
    if (!amount)
        tooLarge();
    return amount;
}

std::optional<int16_t> KeypadModel::countOf(const QString &text)
{
    bool overflow = false;
    const auto count = fitting<int16_t>([&] { return Conv::ToInteger(text); }, overflow);
    if (overflow)
        tooLarge();
    return count;
}

void KeypadModel::result(int16_t r) const
{
    if (report)
        report(r);
}

// --- Sales and voids -----------------------------------------------------------------

bool KeypadModel::takeSaleEntry()
{
    if (Entry.isEmpty() || EntryPosted || PaymentOpen)
        return false;
    if (!holdsX()) {
        Price = Conv::ToDouble(Entry);
        Entry = QStringLiteral("1 x ") + Entry;
        Display = Entry;
    } else {
        Price = Conv::ToDouble(afterX());
    }
    return true;
}

void KeypadModel::sale(int index)
{
    if (!takeSaleEntry())
        return;
    if (Description.isEmpty())
        Description = departmentCaption(index);
    Description = Description.left(25).trimmed();
    if (!gFPControl->Busy()) {
        if (const auto price = amountOf(Price))
            result(gFPControl->SellReparto(Operator, float(Quantity), Description, *price, int16_t(index + 1), 1));
    }
    Quantity = 1.0;
    Price = 0;
    EntryPosted = true;
}

void KeypadModel::voidSale(int index)
{
    if (!takeSaleEntry())
        return;
    Display = QStringLiteral("STORNO ") + Display + QStringLiteral("  REP %1").arg(index + 1);
    // Unlike a sale, a void without a description goes out without one.
    Description = Description.left(25).trimmed();
    if (!gFPControl->Busy()) {
        if (const auto price = amountOf(Price))
            result(gFPControl->StornoReparto(Operator, Description, float(Quantity), *price, int16_t(index + 1), 1));
    }
    Quantity = 1.0;
    Price = 0;
    EntryPosted = true;
}

// --- Discounts and surcharges -------------------------------------------------------

void KeypadModel::adjust(bool total, bool surcharge, Adjustment kind, const QString &missingWord)
{
    if (Entry.isEmpty() || holdsX()) {
        if (tell)
            tell(missingWord, false);
        return;
    }
    if (!gFPControl->Busy()) {
        std::optional<int16_t> r;
        KelvoFPControl &c = *gFPControl;
        if (kind == Adjustment::Amount) {
            if (const auto amount = amountOf(Entry)) {
                if (!total)
                    r = surcharge ? c.AumentoReparto(Operator, *amount) : c.AbbuonoReparto(Operator, *amount);
                else
                    r = surcharge ? c.AumentoTotale(Operator, *amount) : c.AbbuonoTotale(Operator, *amount);
            }
        } else {
            const float percent = Conv::ToSingle(Entry); // twenty digits always fit a Single
            if (!total)
                r = surcharge ? c.AumentoPercReparto(Operator, percent) : c.ScontoPercReparto(Operator, percent);
            else
                r = surcharge ? c.AumentoPercTotale(Operator, percent) : c.ScontoPercTotale(Operator, percent);
        }
        if (r) {
            result(*r);
            // Whatever the printer said: after a try on the subtotal the
            // sale keys stay shut until a payment.
            if (total)
                PaymentOpen = true;
        }
    }
    Reset();
}

// --- Payments ---------------------------------------------------------------------------

void KeypadModel::afterPayment(int16_t r, const Currency &amountSent)
{
    if (r != 0) {
        result(r);
        return;
    }
    // A payment of the whole closes the receipt without a look at the residue.
    PaymentOpen = amountSent.scaled() != 0 && gFPControl->PaymentResidue().scaled() > 0;
}

void KeypadModel::payReceipt(const QString &description, const Currency &amount, int32_t type, int16_t tickets)
{
    if (gFPControl->Busy())
        return;
    afterPayment(gFPControl->PayReceipt(Operator, description, amount, type, tickets, 1), amount);
}

void KeypadModel::cash()
{
    if (!Entry.isEmpty() && !holdsX()) {
        if (!gFPControl->Busy()) {
            if (const auto amount = amountOf(Entry))
                payReceipt(QStringLiteral("Contante"), *amount, 0, 0);
        }
    } else {
        payReceipt(QStringLiteral("Contante"), Currency(), 0, 0);
    }
    Reset();
}

void KeypadModel::cheque()
{
    if (Entry.isEmpty() || holdsX()) {
        if (tell)
            tell(kNoCheque, false);
        return;
    }
    if (!gFPControl->Busy()) {
        if (const auto amount = amountOf(Entry))
            payReceipt(QStringLiteral("Assegno"), *amount, 1, 0);
    }
    Reset();
}

void KeypadModel::card()
{
    if (Entry.isEmpty())
        return;
    // The keyed figure only arms the key: the card pays the whole.
    if (!holdsX())
        payReceipt(QStringLiteral("Carta Credito"), Currency(), 2, 0);
    Reset();
}

void KeypadModel::ticket()
{
    if (Entry.isEmpty())
        return;
    if (!gFPControl->Busy()) {
        // n x v: n tickets of v each; a bare figure is one ticket.
        const std::optional<int16_t> count = holdsX() ? countOf(beforeX()) : std::optional<int16_t>(1);
        if (count) {
            if (const auto value = amountOf(holdsX() ? afterX() : Entry))
                payReceipt(QStringLiteral("Ticket"), *value, 3, *count);
        }
    }
    Reset();
}

void KeypadModel::cashDescription()
{
    if (!holdsX())
        return;
    if (!gFPControl->Busy()) {
        std::optional<int16_t> number = countOf(beforeX());
        std::optional<Currency> amount = number ? amountOf(afterX()) : std::nullopt;
        if (number && amount) {
            int16_t r = gFPControl->PayContanteDesc(Operator, *number, *amount);
            if (r == 0)
                PaymentOpen = gFPControl->PaymentResidue().scaled() > 0;
            else
                result(r);
        }
    }
    Reset();
}

// --- Other keys ---------------------------------------------------------------------------

void KeypadModel::simple(Key key)
{
    if (gFPControl->Busy())
        return;
    KelvoFPControl &c = *gFPControl;
    switch (key) {
    case Key::Subtotal: result(c.PrintSubtotal(Operator)); break;
    case Key::Drawer: result(c.OpenDrawer(Operator)); break;
    case Key::Feed: result(c.FeedPaper(Operator, 1)); break;
    case Key::Closure:
        // The closure prints the whole day: give it time to answer.
        c.setTimeoutOp(30);
        result(c.FiscalClosure(Operator));
        break;
    default: break;
    }
}

void KeypadModel::lock(bool on)
{
    if (gFPControl->Busy())
        return;
    result(on ? gFPControl->LockKeys(Operator) : gFPControl->UnlockKeys(Operator));
    // Locked on the screen even if the printer refused.
    Locked = on;
    if (on)
        Display = kLocked;
    else
        Reset();
    // The printer hears the lock twice at each press; it takes no harm.
    result(on ? gFPControl->LockKeys(Operator) : gFPControl->UnlockKeys(Operator));
}

// --- Menus --------------------------------------------------------------------------------

std::optional<bool> KeypadModel::learningMode()
{
    if (gFPControl->Busy())
        return std::nullopt;
    int16_t flag = 1;
    if (gFPControl->ReadFlag(flag) != 0)
        return std::nullopt;
    return gFPControl->FlagValue() == 1;
}

bool KeypadModel::setLearningMode(bool on)
{
    if (gFPControl->Busy())
        return false;
    int16_t flag = 1;
    const int16_t r = gFPControl->WriteFlag(flag, on ? 1 : 0);
    if (r != 0) {
        result(r);
        return false;
    }
    if (tell)
        tell(on ? QStringLiteral("Modalità apprendimento") : QStringLiteral("Modalità fiscale"), false);
    return true;
}

void KeypadModel::resetPluTotals()
{
    // No test of Busy and no look at the results: the reset runs through.
    for (int16_t plu = 1; plu <= 1000; ++plu) {
        int16_t number = plu;
        gFPControl->ResetTotalePlu(number);
    }
}

void KeypadModel::resetPromoTotals()
{
    for (int32_t table = 1; table <= 3; ++table)
        gFPControl->ResetTotalePromo(table, 0);
}
