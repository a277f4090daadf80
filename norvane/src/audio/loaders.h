#ifndef NORVANE_AUDIO_LOADERS_H
#define NORVANE_AUDIO_LOADERS_H

#include <cstdio>
#include <string>

struct OggVorbis_File;
struct vorbis_info;

namespace norvane {
namespace audio {

// One open audio file handing out decoded 16-bit PCM in pieces.
class FileLoader {
public:
    explicit FileLoader(const std::string& filename);  // throws when the file cannot be opened
    FileLoader(const FileLoader&) = delete;
    FileLoader& operator=(const FileLoader&) = delete;
    virtual ~FileLoader();

    // Decodes up to *size bytes (the whole file when size is null) and stores the count delivered;
    // fewer than asked means the end was reached. A looping read wraps to the start and fills up.
    // The data stays valid until the next read. Throws on decode errors.
    virtual const char* read(int* size, bool loop) = 0;
    virtual void rewind() = 0;

    void freeBuffer();
    int getFormat() const { return format; }  // AL_FORMAT_MONO16 or AL_FORMAT_STEREO16
    int getSize() const { return size; }      // bytes of decoded data in the whole file
    int getFrequency() const { return frequency; }

protected:
    std::FILE* file = nullptr;
    int format = 0;
    int size = 0;
    int frequency = 0;
    int capacity = 0;
    char* buffer = nullptr;
};

class OggFileLoader : public FileLoader {
public:
    explicit OggFileLoader(const std::string& filename);  // throws when it is no readable Ogg Vorbis file
    ~OggFileLoader() override;

    const char* read(int* size, bool loop) override;
    void rewind() override;

private:
    bool seekStart();  // false, and logged, when the stream cannot be rewound

    OggVorbis_File* vorbisFile;  // owns `file` once opened
    vorbis_info* info = nullptr;
};

// The loader for the file's extension, owned by the caller. Throws for unknown types.
FileLoader* getFileLoader(const std::string& filename);

std::string getOggErrorString(int code);

}  // namespace audio
}  // namespace norvane

#endif
