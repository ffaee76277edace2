#pragma once

#include <QDialog>
#include <cstdint>

// "Disintallazione": the decommissioning, step by step.
class RemoveStepForm : public QDialog
{
    Q_OBJECT
public:
    explicit RemoveStepForm(QWidget *parent = nullptr);
};
