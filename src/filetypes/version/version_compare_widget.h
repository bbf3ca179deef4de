#pragma once

#include "filetypes/version/engine/program_file.h"
#include "session/fields/fields_session.h"

namespace velmora {

/// The session of kind "version": what two programs or libraries say of themselves, and what else tells builds apart.
class VersionCompareWidget final : public FieldsSession {
    Q_OBJECT
public:
    explicit VersionCompareWidget(SessionHost &host, QWidget *parent = nullptr);

    [[nodiscard]] QString kind() const override { return QStringLiteral("version"); }

protected:
    void compare(const Sides<QString> &files) override;

private:
    void take(const Sides<QString> &files, const Sides<ProgramReading> &readings);
};

} // namespace velmora
