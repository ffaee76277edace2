#pragma once

#include <QDialog>
#include <cstdint>

// "Giornale di Fondo": selection and destination of a journal reading.
class DGFEForm : public QDialog
{
    Q_OBJECT
public:
    explicit DGFEForm(QWidget *parent = nullptr);
};
