// Saves theme files the way editors and other programs do, for tst_saves.
//
// Reads lines "way path title radius" and answers each with the line "done". Plain system calls:
// what reaches the watcher is exactly what is written here.

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <iostream>
#include <string>
#include <thread>

namespace {

struct Save
{
    std::string path;
    std::string title;
    int radius;
};

void require(bool holds, const char *what)
{
    if (holds)
        return;
    std::perror(what);
    std::exit(1);
}

void pause(int milliseconds)
{
    std::this_thread::sleep_for(std::chrono::milliseconds(milliseconds));
}

std::string document(const Save &save, int radius)
{
    return "{\"title\": \"" + save.title + "\", \"global\": {\"radius\": " + std::to_string(radius)
            + ", \"colors\": {\"foreground\": \"red\", \"background\": \"white\"}}}\n";
}

class File
{
public:
    explicit File(const std::string &path)
        : m_descriptor(open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0644))
    {
        require(m_descriptor >= 0, path.c_str());
    }

    ~File() { close(m_descriptor); }

    void append(const std::string &text)
    {
        require(write(m_descriptor, text.data(), text.size()) == ssize_t(text.size()), "write");
    }

private:
    const int m_descriptor;
};

void saveAs(const std::string &path, const Save &save)
{
    File(path).append(document(save, save.radius));
}

void inPlace(const Save &save)
{
    saveAs(save.path, save);
}

void inTwoChunks(const Save &save)
{
    const std::string text = document(save, save.radius);
    File file(save.path);
    file.append(text.substr(0, text.size() / 2));
    pause(15);
    file.append(text.substr(text.size() / 2));
}

void tenTimes(const Save &save)
{
    for (int before = 9; before >= 0; --before) {
        File(save.path).append(document(save, save.radius + before));
        pause(10);
    }
}

void touch(const Save &save)
{
    require(utimensat(AT_FDCWD, save.path.c_str(), nullptr, 0) == 0, "utimensat");
}

void changeMode(const Save &save)
{
    require(chmod(save.path.c_str(), 0600) == 0 && chmod(save.path.c_str(), 0644) == 0, "chmod");
}

void renameOver(const Save &save)
{
    const std::string temporary = save.path + ".new";
    saveAs(temporary, save);
    require(rename(temporary.c_str(), save.path.c_str()) == 0, "rename");
}

void backUpAndCreate(const Save &save)
{
    require(rename(save.path.c_str(), (save.path + "~").c_str()) == 0, "rename");
    saveAs(save.path, save);
}

void deleteAndCreate(const Save &save)
{
    require(unlink(save.path.c_str()) == 0, "unlink");
    pause(5);
    saveAs(save.path, save);
}

void retargetLink(const Save &save)
{
    static int count = 0;
    const std::string target = save.path + "." + std::to_string(++count);
    const std::string link = save.path + ".link";
    saveAs(target, save);
    require(symlink(target.c_str(), link.c_str()) == 0, "symlink");
    require(rename(link.c_str(), save.path.c_str()) == 0, "rename");
}

void half(const Save &save)
{
    const std::string text = document(save, save.radius);
    File(save.path).append(text.substr(0, text.size() / 2));
}

void nothing(const Save &save)
{
    const File file(save.path);
}

void garbage(const Save &save)
{
    File(save.path).append(std::string("\xff\xfe\0{]", 5));
}

const struct
{
    const char *name;
    void (*save)(const Save &save);
} ways[] = {
    { "in-place", inPlace },
    { "two-chunks", inTwoChunks },
    { "ten-times", tenTimes },
    { "touch", touch },
    { "change-mode", changeMode },
    { "rename-over", renameOver },
    { "back-up-and-create", backUpAndCreate },
    { "delete-and-create", deleteAndCreate },
    { "retarget-link", retargetLink },
    { "half", half },
    { "nothing", nothing },
    { "garbage", garbage },
};

} // namespace

int main()
{
    std::string name;
    Save save;
    while (std::cin >> name >> save.path >> save.title >> save.radius) {
        bool isKnown = false;
        for (const auto &way : ways) {
            if (name == way.name) {
                isKnown = true;
                way.save(save);
            }
        }
        require(isKnown, name.c_str());
        std::cout << "done" << std::endl;
    }
    return 0;
}
