// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <qnamespace.h>
#include <cstdint>
#include <functional>
#include <optional>

#include "settings/Currency.h"

// The cash-register keypad without its window: the entry being keyed, the
// rules of every key and the display they leave. Each key sends at most one
// operation to the printer (gFPControl); the printer keeps the receipt, its
// totals and its rules. What the technician must be told goes out through
// the two hooks, so that the window decides how to show it.
class KeypadModel
{
public:
    enum class Key {
        Digit1, Digit2, Digit3, Digit4, Digit5, Digit6, Digit7, Digit8, Digit9, Digit0, Digit00,
        Decimal, Multiply, Clear,
        Sale1, Sale2, Sale3, Sale4,
        Void1, Void2, Void3, Void4,
        // On the last sale, then on the subtotal.
        ItemSurcharge, ItemDiscount, ItemPercentSurcharge, ItemPercentDiscount,
        TotalSurcharge, TotalDiscount, TotalPercentSurcharge, TotalPercentDiscount,
        Subtotal, Cash, Cheque, Card, Ticket, CashDescription,
        Drawer, Feed, Closure, Lock, Unlock,
    };
    static constexpr int KeyCount = int(Key::Unlock) + 1;

    KeypadModel();

    void press(Key key);
    // The keys the lock shuts; the others stay alive through it.
    static bool shutByLock(Key key);
    // The key a typing key stands for: digits, ',' or '.', '*' or 'x', Delete
    // for CL, F1..F4 the departments (with Shift their voids), Enter the
    // till's total key (cash).
    static std::optional<Key> keyForTyping(int qtKey, Qt::KeyboardModifiers modifiers);
    // The caption a sale without a description goes out with: "REP n".
    static QString departmentCaption(int index);

    // --- State -----------------------------------------------------------------------
    QString Display;         // what the keypad's display shows
    QString Description;     // the product's description, typed by the technician
    QString Entry;           // keyed and not yet used: "", p, or q " x " p
    double Quantity = 1.0;   // the multiplier
    double Price = 0;        // unit price of the sale under way
    bool DecimalKeyed = false;
    int16_t DecimalDigits = 0;
    bool EntryPosted = false; // sent as a sale: the next digit starts afresh
    int16_t Operator = 1;
    bool Locked = false;
    QString DecimalSeparator;
    // A part was paid or the subtotal adjusted: the sale keys are shut. It
    // outlives the keypad, as the receipt outlives it in the printer.
    static bool PaymentOpen;

    // --- What the technician is told -------------------------------------------------
    std::function<void(int16_t result)> report;                  // a result of the control
    std::function<void(const QString &text, bool warning)> tell; // a message of the keypad

    // --- Menus -----------------------------------------------------------------------
    // The printer's learning mode, when it can be read.
    std::optional<bool> learningMode();
    // Asks the printer to switch; true when it did.
    bool setLearningMode(bool on);
    void resetPluTotals();
    void resetPromoTotals();

    void Reset();

private:
    void digit(int index);
    void decimal();
    void multiply();
    // Sale and void share their conditions and their first step; false when
    // the key does nothing.
    bool takeSaleEntry();
    void sale(int index);
    void voidSale(int index);
    enum class Adjustment { Amount, Percent };
    void adjust(bool total, bool surcharge, Adjustment kind, const QString &missingWord);
    // After a payment: PaymentOpen follows what is left to pay.
    void afterPayment(int16_t result, const Currency &amountSent);
    void payReceipt(const QString &description, const Currency &amount, int32_t type, int16_t tickets);
    void cash();
    void cheque();
    void card();
    void ticket();
    void cashDescription();
    void simple(Key key);
    void lock(bool on);

    bool holdsX() const { return Entry.contains(QLatin1Char('x')); }
    QString beforeX() const;
    QString afterX() const;
    std::optional<Currency> amountOf(const QString &text);
    std::optional<Currency> amountOf(double value);
    std::optional<int16_t> countOf(const QString &text);
    void result(int16_t r) const;
    void tooLarge() const;
};
