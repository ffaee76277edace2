#pragma once

#include <QDialog>
#include <cstdint>

// "Giornale di Fondo": the entry screen of the electronic journal.
class GiornaleDGFEForm : public QDialog
{
    Q_OBJECT
public:
    explicit GiornaleDGFEForm(QWidget *parent = nullptr);
};
