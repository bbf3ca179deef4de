#pragma once

#include "filetypes/registry/registry_job.h"
#include "session/fields/fields_session.h"

namespace velmora {

class RegistryBar;
class RegistryEncodings;
class TreeModel;
class TreeView;

/// The session of kind "registry": the keys and values of two `.reg` files, or, on Windows, of live keys. A tree of
/// keys stands beside the list, which shows what is in the current one.
class RegistryCompareWidget final : public FieldsSession {
    Q_OBJECT
public:
    /// `live`: the registry that is read and written where a side names a key; null for none.
    explicit RegistryCompareWidget(SessionHost &host, QWidget *parent = nullptr,
                                   LiveRegistry *live = LiveRegistry::system());

    [[nodiscard]] QString kind() const override { return QStringLiteral("registry"); }
    /// A side that is a live key is told by its text (`liveKeyText`).
    [[nodiscard]] SessionPaths paths() const override;
    void setPaths(const SessionPaths &paths) override;
    /// Those of every list of fields, and "leftEncoding" and "rightEncoding" where a code page was chosen.
    [[nodiscard]] QJsonObject options() const override;
    void setOptions(const QJsonObject &options) override;
    void refreshTheme() override;

public Q_SLOTS:
    void onNoise();

protected:
    void compare(const Sides<QString> &files) override;

private:
    RegistryCompareWidget(SessionHost &host, QWidget *parent, LiveRegistry *live, RegistryBar *&bar);
    void connectBar();
    void take(const Sides<QString> &places, RegistryResult &&result);
    [[nodiscard]] std::unique_ptr<const RowSource> rowsOf(qint32 node) const;
    void showTree(RegistryKeyNodes &&nodes);
    void showKey();
    void showKeysOfView();
    void allowCommands();

    // What is written (registry_saving.cpp).
    void savePatch(Side changed);
    void saveSide(Side side);
    /// Asks where to, and writes what `make` makes there.
    void saveTree(const QString &title, const QString &name, std::function<RegistryTree()> make);
    void write(Side changed);
    void keepAndWrite(const RegistryWriteOrder &order);
    void tellWritten(const RegistryWriteResult &result, const QString &keptPath);

    RegistryBar *m_bar = nullptr;
    RegistryEncodings *m_encodings;
    LiveRegistry *m_live;
    std::shared_ptr<RegistryComparison> m_comparison; ///< null until there is one
    Sides<QString> m_places;                          ///< that it is of
    RegistryKeyTree *m_tree = nullptr;                ///< the model's
    TreeModel *m_keys;
    TreeView *m_view;
};

} // namespace velmora
