#include "folder_operations/scripted_layer.h"

#include <QStringList>

namespace velmora::test {

namespace {

class ScriptedSource final : public FileSource {
public:
    ScriptedSource(ScriptedLayer &layer, std::unique_ptr<FileSource> real) : m_layer(layer), m_real(std::move(real)) {}

    NodeResult state() override
    {
        const FileError error = m_layer.ask(QLatin1String("source.state"));
        return error.isError() ? NodeResult{{}, error} : m_real->state();
    }
    FilePiece read(char *buffer, qint64 length) override
    {
        return m_layer.ask(QLatin1String("source.read")).isError() ? FilePiece{0, true} : m_real->read(buffer, length);
    }
    [[nodiscard]] FileSource &real() { return *m_real; }

private:
    ScriptedLayer &m_layer;
    std::unique_ptr<FileSource> m_real;
};

class ScriptedSink final : public FileSink {
public:
    ScriptedSink(ScriptedLayer &layer, std::unique_ptr<FileSink> real) : m_layer(layer), m_real(std::move(real)) {}

    FileError write(const char *bytes, qint64 length) override
    {
        const FileError error = m_layer.ask(QLatin1String("sink.write"));
        if (!error.isError())
            return m_real->write(bytes, length);
        (void)m_real->write(bytes, length / 2);
        return error;
    }
    FileError copyFrom(FileSource &source, const Tick &tick) override
    {
        const FileError error = m_layer.ask(QLatin1String("sink.copyFrom"));
        if (!error.isError())
            return m_real->copyFrom(static_cast<ScriptedSource &>(source).real(), tick);
        (void)m_real->write("half", 4);
        return error;
    }
    FileError keepAttributes(const NodeState &model) override
    {
        const FileError error = m_layer.ask(QLatin1String("sink.keepAttributes"));
        return error.isError() ? error : m_real->keepAttributes(model);
    }
    FileError flush() override
    {
        return m_layer.ask(QLatin1String("sink.flush")); // what the disk does is nothing that tests could see
    }
    NodeResult state() override
    {
        const FileError error = m_layer.ask(QLatin1String("sink.state"));
        return error.isError() ? NodeResult{{}, error} : m_real->state();
    }

private:
    ScriptedLayer &m_layer;
    std::unique_ptr<FileSink> m_real;
};

class ScriptedFolder final : public FolderHandle {
public:
    ScriptedFolder(ScriptedLayer &layer, std::unique_ptr<FolderHandle> real) : m_layer(layer), m_real(std::move(real))
    {}

    NodeResult self() override
    {
        return result("self", [&] { return m_real->self(); });
    }
    NodeResult stat(const QString &name) override
    {
        return result("stat", [&] { return m_real->stat(name); });
    }
    FileError list(const Sink &sink) override
    {
        return made("list", [&] { return m_real->list(sink); });
    }
    bool liesIn(FolderHandle &other) override { return m_real->liesIn(real(other)); }
    FileError checkPath(const QString &path) override { return m_real->checkPath(path); }

    std::unique_ptr<FolderHandle> openFolder(const QString &name, FileError &error) override
    {
        return opened<FolderHandle, ScriptedFolder>("openFolder", error,
                                                    [&] { return m_real->openFolder(name, error); });
    }
    std::unique_ptr<FileSource> openFile(const QString &name, FileError &error) override
    {
        return opened<FileSource, ScriptedSource>("openFile", error, [&] { return m_real->openFile(name, error); });
    }
    std::unique_ptr<FileSink> createFile(const QString &name, FileError &error) override
    {
        return opened<FileSink, ScriptedSink>("createFile", error, [&] { return m_real->createFile(name, error); });
    }

    FileError makeFolder(const QString &name, const NodeState *model) override
    {
        return made("makeFolder", [&] { return m_real->makeFolder(name, model); });
    }
    FileError linkTarget(const QString &name, QString &target) override
    {
        return made("linkTarget", [&] { return m_real->linkTarget(name, target); });
    }
    FileError makeLink(const QString &name, const QString &target, bool leadsToFolder) override
    {
        return made("makeLink", [&] { return m_real->makeLink(name, target, leadsToFolder); });
    }
    FileError makeHardLink(const QString &name, FolderHandle &to, const QString &newName) override
    {
        return made("makeHardLink", [&] { return m_real->makeHardLink(name, real(to), newName); });
    }
    FileError move(const QString &name, FolderHandle &to, const QString &newName, IfTaken ifTaken) override
    {
        return made("move", [&] { return m_real->move(name, real(to), newName, ifTaken); });
    }
    FileError exchange(const QString &name, FolderHandle &to, const QString &newName) override
    {
        return made("exchange", [&] { return m_real->exchange(name, real(to), newName); });
    }
    FileError letOwnerWrite(bool may) override
    {
        return made("letOwnerWrite", [&] { return m_real->letOwnerWrite(may); });
    }
    FileError keepAttributes(const QString &name, const NodeState &model) override
    {
        return made("keepAttributes", [&] { return m_real->keepAttributes(name, model); });
    }
    FileError keepFolderAttributes(const QString &name, FolderHandle &from, const QString &model) override
    {
        m_layer.finished.append(name);
        return made("keepFolderAttributes", [&] { return m_real->keepFolderAttributes(name, real(from), model); });
    }
    FileError removeFile(const QString &name) override
    {
        return made("removeFile", [&] { return m_real->removeFile(name); });
    }
    FileError removeFolder(const QString &name) override
    {
        return made("removeFolder", [&] { return m_real->removeFolder(name); });
    }
    RecycleResult recycle(const QString &name, const BinNotice &notice) override
    {
        const FileError error = m_layer.ask(QLatin1String("recycle"));
        RecycleResult result = error.isError() ? RecycleResult{{}, error} : m_real->recycle(name, notice);
        if (!m_layer.tellsBin())
            result.binPath.clear();
        return result;
    }
    FileError settle() override { return m_layer.ask(QLatin1String("settle")); }

    [[nodiscard]] static FolderHandle &real(FolderHandle &folder)
    {
        return *static_cast<ScriptedFolder &>(folder).m_real;
    }

private:
    template <typename Call>
    FileError made(const char *name, const Call &call)
    {
        const FileError error = m_layer.ask(QLatin1String(name));
        return error.isError() ? error : call();
    }

    template <typename Call>
    NodeResult result(const char *name, const Call &call)
    {
        const FileError error = m_layer.ask(QLatin1String(name));
        return error.isError() ? NodeResult{{}, error} : call();
    }

    template <typename Interface, typename Scripted, typename Call>
    std::unique_ptr<Interface> opened(const char *name, FileError &error, const Call &call)
    {
        error = m_layer.ask(QLatin1String(name));
        if (error.isError())
            return nullptr;
        auto object = call();
        return object ? std::make_unique<Scripted>(m_layer, std::move(object)) : nullptr;
    }

    ScriptedLayer &m_layer;
    std::unique_ptr<FolderHandle> m_real;
};

} // namespace

std::unique_ptr<FolderHandle> ScriptedLayer::openRoot(const QString &path, FileError &error)
{
    error = ask(QLatin1String("openRoot"));
    if (error.isError())
        return nullptr;
    std::unique_ptr<FolderHandle> root = FileLayer::native().openRoot(path, error);
    return root ? std::make_unique<ScriptedFolder>(*this, std::move(root)) : nullptr;
}

FileError ScriptedLayer::restore(const QString &binPath, FolderHandle &to, const QString &name,
                                 const NodeTest &isExpected)
{
    const FileError error = ask(QLatin1String("restore"));
    return error.isError() ? error : FileLayer::native().restore(binPath, ScriptedFolder::real(to), name, isExpected);
}

ScriptedLayer::Script betweenVolumes()
{
    return [isCopied = false, isSwapped = false, isTried = false](int, QLatin1String call) mutable {
        // Only the renaming of a finished copy or a link stays within a volume, and the swapping back of two entries.
        isCopied = isCopied || call == QLatin1String("sink.copyFrom") || call == QLatin1String("makeLink");
        bool crosses = call == QLatin1String("makeHardLink");
        // A system that cannot swap entries is asked to do so in vain, and renames the copy then.
        const bool wasTried = std::exchange(isTried, call == QLatin1String("exchange") && isCopied);
        if (call == QLatin1String("exchange")) {
            crosses = !std::exchange(isCopied, false) && !isSwapped;
            isSwapped = !crosses;
        } else if (call == QLatin1String("move")) {
            crosses = !std::exchange(isCopied, false) && !wasTried;
        }
        isSwapped = isSwapped && !crosses;
        return crosses ? FileError{FileErrorKind::OtherVolume, {}} : FileError();
    };
}

} // namespace velmora::test
