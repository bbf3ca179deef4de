#pragma once

#include <QWidget>

class QCheckBox;

namespace velmora {

struct TextSessionOptions;

/// The five grammar elements of a line, each with a check box that says whether it is important, under their heading.
class GrammarBoxes final : public QWidget {
    Q_OBJECT
public:
    explicit GrammarBoxes(QWidget *parent = nullptr);

    void load(const TextSessionOptions &options);
    void store(TextSessionOptions &options) const;

Q_SIGNALS:
    void changed();

private:
    QCheckBox *m_leading;
    QCheckBox *m_embedded;
    QCheckBox *m_trailing;
    QCheckBox *m_everythingElse;
    QCheckBox *m_characterCase;
};

} // namespace velmora
