#pragma once

#include <QObject>
#include <QString>

#include <functional>

namespace velmora {

class EditedTexts;
class SessionHost;
class TextInput;

/// Opens comparisons of a text with other files, which read it from its own file: that is to hold it, or a person wants
/// the file as it is.
class TextEditComparing final : public QObject {
    Q_OBJECT
public:
    /// `texts` has the text of `input` alone; all outlive this object. `window` is what questions belong to.
    TextEditComparing(SessionHost &host, EditedTexts &texts, const TextInput &input, QWidget *window);

    /// Asks for another file and opens a comparison with it.
    void chooseFile();

private:
    void beforeComparing(std::function<void()> go);
    void compareWith(const QString &other);

    SessionHost &m_host;
    EditedTexts &m_texts;
    const TextInput &m_input;
    QWidget *m_window;
};

} // namespace velmora
