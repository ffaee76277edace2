#pragma once

#include <QDialog>
#include <cstdint>

// "KelvoFpDemo": the on-screen cash-register keypad.
class KelvoFpSimulaForm : public QDialog
{
    Q_OBJECT
public:
    explicit KelvoFpSimulaForm(QWidget *parent = nullptr);
};
