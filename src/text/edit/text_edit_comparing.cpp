#include "text/edit/text_edit_comparing.h"

#include "session/dialogs.h"
#include "session/document/edited_texts.h"
#include "session/document/text_input.h"
#include "session/session_host.h"
#include "session/session_record.h"
#include "session/translate.h"

#include <QFileInfo>
#include <QWidget>

#include <utility>

namespace velmora {

namespace {

constexpr int onlyPane = 0;

} // namespace

TextEditComparing::TextEditComparing(SessionHost &host, EditedTexts &texts, const TextInput &input, QWidget *window)
    : QObject(window), m_host(host), m_texts(texts), m_input(input), m_window(window)
{}

void TextEditComparing::chooseFile()
{
    beforeComparing([this] {
        Dialogs::instance().openFile(m_window, Velmora::tr("Compare with"), m_input.loadedPath(), {},
                                     [this](const QString &other) { compareWith(other); });
    });
}

void TextEditComparing::compareWith(const QString &other)
{
    m_host.openSession(m_host.kindFor(SessionHost::Purpose::CompareTexts), {m_input.loadedPath(), other, {}});
}

void TextEditComparing::beforeComparing(std::function<void()> go)
{
    const bool hasFile = QFileInfo(m_input.loadedPath()).isFile();
    if (hasFile && !m_texts.isModified(onlyPane)) {
        go();
        return;
    }
    enum Answer { Cancel, Save, AsItIs };
    QList<Dialogs::Choice> choices{{Velmora::tr("&Save"), Save, true, false}};
    if (hasFile)
        choices.append({Velmora::tr("Compare the &file"), AsItIs, false, false});
    choices.append({Velmora::tr("Cancel"), Cancel, false, true});
    Dialogs::instance().ask(m_window, Dialogs::Tone::Warning, Velmora::tr("Unsaved changes"),
                            Velmora::tr("A comparison reads the file, which lacks the changes made here. Save them "
                                        "first?"),
                            choices, [this, go = std::move(go)](int answer) {
                                if (answer == AsItIs)
                                    go();
                                else if (answer == Save)
                                    m_texts.saving().save(onlyPane, [go](bool saved) {
                                        if (saved)
                                            go();
                                    });
                            });
}

} // namespace velmora
