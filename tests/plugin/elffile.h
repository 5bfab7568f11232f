#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QFile>
#include <QtCore/QList>
#include <QtCore/QString>

#if defined(Q_OF_ELF)

#include <cstring>
#include <elf.h>
#include <link.h>

/// Reads what the tests need of a shared library in this machine's own format.
class ElfFile
{
public:
    explicit ElfFile(const QString &path)
    {
        QFile file(path);
        if (file.open(QIODevice::ReadOnly))
            m_content = file.readAll();
    }

    bool isValid() const
    {
        return m_content.size() > int(sizeof(ElfW(Ehdr)))
                && std::memcmp(m_content.constData(), ELFMAG, SELFMAG) == 0;
    }

    struct Section
    {
        ElfW(Shdr) header = {};
        QByteArray name;
        QByteArray content;
    };

    QList<Section> sections() const
    {
        const auto header = at<ElfW(Ehdr)>(m_content, 0);
        QList<Section> result;
        for (int i = 0; i < header.e_shnum; ++i) {
            Section section;
            section.header = at<ElfW(Shdr)>(m_content,
                                            header.e_shoff + std::size_t(i) * header.e_shentsize);
            if (section.header.sh_type != SHT_NOBITS) {
                section.content = m_content.mid(int(section.header.sh_offset),
                                                int(section.header.sh_size));
            }
            result.append(section);
        }
        const QByteArray names = result.at(header.e_shstrndx).content;
        for (Section &section : result)
            section.name = names.constData() + section.header.sh_name;
        return result;
    }

    Section section(const QByteArray &name) const
    {
        const auto all = sections();
        for (const Section &section : all) {
            if (section.name == name)
                return section;
        }
        return Section();
    }

    /// The functions and objects that the library offers, as they stand in the file.
    QList<QByteArray> exportedSymbols() const
    {
        const QByteArray names = section(".dynstr").content;
        QList<QByteArray> result;
        const QByteArray table = section(".dynsym").content;
        for (std::size_t i = 0; i < std::size_t(table.size()); i += sizeof(ElfW(Sym))) {
            const auto symbol = at<ElfW(Sym)>(table, i);
            // The macros for 32 and 64 bits do the same.
            const int type = ELF64_ST_TYPE(symbol.st_info);
            if (symbol.st_shndx != SHN_UNDEF && (type == STT_FUNC || type == STT_OBJECT))
                result.append(names.constData() + symbol.st_name);
        }
        return result;
    }

    /// The names of the symbols whose addresses the loader writes to \a address.
    QList<QByteArray> relocationsAt(ElfW(Addr) address) const
    {
        const QByteArray names = section(".dynstr").content;
        const QByteArray symbols = section(".dynsym").content;
        QList<QByteArray> result;
        const auto all = sections();
        for (const Section &section : all) {
            if (section.header.sh_type != SHT_RELA && section.header.sh_type != SHT_REL)
                continue;
            for (std::size_t i = 0; i < std::size_t(section.content.size());
                 i += section.header.sh_entsize) {
                // Both kinds begin with these two fields.
                const auto relocation = at<ElfW(Rel)>(section.content, i);
                if (relocation.r_offset != address)
                    continue;
                const std::size_t index = sizeof(void *) == 8
                        ? std::size_t(ELF64_R_SYM(relocation.r_info))
                        : std::size_t(ELF32_R_SYM(relocation.r_info));
                result.append(names.constData()
                              + at<ElfW(Sym)>(symbols, index * sizeof(ElfW(Sym))).st_name);
            }
        }
        return result;
    }

    QList<QByteArray> neededLibraries() const
    {
        const QByteArray names = section(".dynstr").content;
        const QByteArray table = section(".dynamic").content;
        QList<QByteArray> result;
        for (std::size_t i = 0; i < std::size_t(table.size()); i += sizeof(ElfW(Dyn))) {
            const auto entry = at<ElfW(Dyn)>(table, i);
            if (entry.d_tag == DT_NEEDED)
                result.append(names.constData() + entry.d_un.d_val);
        }
        return result;
    }

    template <typename Record>
    static Record at(const QByteArray &bytes, std::size_t offset)
    {
        Record record = {};
        if (offset + sizeof(Record) <= std::size_t(bytes.size()))
            std::memcpy(&record, bytes.constData() + offset, sizeof(Record));
        return record;
    }

private:
    QByteArray m_content;
};

#endif
