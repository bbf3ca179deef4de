#pragma once

#include "folder/operations/operation_plan.h"

#include <QDialog>

class QCheckBox;

namespace velmora {

/// Shows what a plan will do before it is done, and asks whether to. Opened with open(); `accepted` is the consent.
/// What Return does is to call it off.
class PlanPreviewDialog final : public QDialog {
    Q_OBJECT
public:
    /// `consent` is the text of the button that starts it.
    PlanPreviewDialog(const QString &title, const QString &question, const QString &consent, const OperationPlan &plan,
                      QWidget *parent = nullptr);

    /// Adds something that can be wanted as well, with what it means as a tool tip; not wanted at first.
    void offer(const QString &text, const QString &hint);
    [[nodiscard]] bool isOfferTaken() const;

private:
    QCheckBox *m_offer;
};

} // namespace velmora
