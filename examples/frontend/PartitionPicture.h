#pragma once

#include <LanqorEngine/AradPartitionResults.h>

#include <QWidget>

/// Bars of the share of each coordinated atom in the forced electric dipole rate.
class PartitionPicture : public QWidget
{
public:
    using QWidget::QWidget;
    void setPartition(const AradPartitionResults &results);

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    AradPartitionResults partition;
};
