#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

/// Kind of a record. The numbers are shared with the runtime, whose own parameter tree has the same record
/// layout.
enum REG_FORMAT : int {
    REG_FORMAT_GROUP = 0,
    REG_FORMAT_UINT = 1,
    REG_FORMAT_FLOAT = 2,
    REG_FORMAT_ENUM = 3,
    REG_FORMAT_LUT = 4,
    REG_FORMAT_STRING = 5,
    REG_FORMAT_DOUBLE = 6,
    REG_FORMAT_UINTFIELD = 7,
    REG_FORMAT_DOUBLEFIELD = 8,
    REG_FORMAT_UINT64 = 9,
    REG_FORMAT_UINTFIELD64 = 10,
    REG_FORMAT_INT = 11,
    REG_FORMAT_INT64 = 12,
    REG_FORMAT_INTFIELD = 13,
    REG_FORMAT_INTFIELD64 = 14,
    REG_FORMAT_STRINGFIELD = 15,
    REG_FORMAT_ENUMFIELD = 16,
};

struct RegisterInfo;

struct IntReg {
    int from, to, steps, value;
};

struct UIntReg {
    std::uint32_t from, to, steps, value;
};

struct IntReg64 {
    std::int64_t from, to, steps, value;
};

struct FloatReg {
    float from, to, steps, value;
};

struct DoubleReg {
    double from, to, steps, value;
};

struct GroupReg {
    int nrOfElements;
    RegisterInfo** elements; ///< exactly nrOfElements records; a new array after every addition
    int autoIndex;           ///< index of the next child
};

struct EnumReg {
    int nrOfElements;
    char** enumNames; ///< display names, null where an entry was not set
    int* enumValues;
    int absValue;
    int indexValue;
    char** enumDefName; ///< symbolic names, null where an entry has none
};

struct LutReg {
    int nrOfElements, nrOfBits, id, number;
};

struct StringReg {
    char* string;
    char* FileExtension; ///< file filter such as "*.lut", or null
    int strLen;
};

struct DoubleFieldReg {
    double from, to;
    int nrOfElements, index;
    double value;
};

struct IntFieldReg {
    int from, to, nrOfElements, index, value;
};

struct UIntFieldReg {
    std::uint32_t from, to, nrOfElements, index, value;
};

struct Int64FieldReg {
    std::int64_t from, to;
    int nrOfElements, index;
    std::int64_t value;
};

/// Description of one parameter, or of a group of them. The memory layout is shared with the runtime, so a
/// record is a plain structure; the registry that made it owns it and everything that it points to.
struct RegisterInfo {
    REG_FORMAT format;
    int index;           ///< position among the elements of the parent
    char* name;          ///< display name ("Width")
    char* parameterName; ///< runtime name ("FG_WIDTH"); null for a group
    int accessFlags;
    int rangeFlags;
    int visibilityFlags;
    int id; ///< parameter id; 0 for a group
    union {
        IntReg iReg;
        UIntReg uiReg;
        IntReg64 iReg64;
        FloatReg fReg;
        DoubleReg dReg;
        GroupReg gReg;
        EnumReg eReg;
        LutReg lReg;
        StringReg sReg;
        DoubleFieldReg dfReg;
        IntFieldReg ifReg;
        UIntFieldReg uifReg;
        Int64FieldReg if64Reg;
    } u;
    RegisterInfo* next; ///< next top-level group of the port; null everywhere else
    RegisterInfo* previous;
    int depth;        ///< 0 for a top-level group; groups only
    char* parentName; ///< name of the parent group; subgroups only
    char* unit;       ///< "pixel", "Hz", ... or null
    int port;
};

#if defined(__i386__)
static_assert(offsetof(RegisterInfo, format) == 0 && offsetof(RegisterInfo, index) == 4);
static_assert(offsetof(RegisterInfo, name) == 8 && offsetof(RegisterInfo, parameterName) == 12);
static_assert(offsetof(RegisterInfo, accessFlags) == 16 && offsetof(RegisterInfo, rangeFlags) == 20);
static_assert(offsetof(RegisterInfo, visibilityFlags) == 24 && offsetof(RegisterInfo, id) == 28);
static_assert(offsetof(RegisterInfo, u) == 32 && sizeof(RegisterInfo::u) == 32);
static_assert(offsetof(RegisterInfo, next) == 64 && offsetof(RegisterInfo, previous) == 68);
static_assert(offsetof(RegisterInfo, depth) == 72 && offsetof(RegisterInfo, parentName) == 76);
static_assert(offsetof(RegisterInfo, unit) == 80 && offsetof(RegisterInfo, port) == 84);
static_assert(sizeof(RegisterInfo) == 88);
#endif

/// Registry of parameter descriptions: one tree of records per port.
///
/// Ports are 0 to 3; another port has no records and takes none. Every text is copied. A record lives until
/// its port is destroyed. Adding returns null when nothing was added; running out of memory throws
/// std::bad_alloc and leaves the registry as it was. The flags (access, range, visibility) are kept as given.
class Fg_ParameterInfo {
  public:
    static constexpr int portCount = 4;

    Fg_ParameterInfo();
    ~Fg_ParameterInfo();
    Fg_ParameterInfo(const Fg_ParameterInfo&) = delete;
    Fg_ParameterInfo& operator=(const Fg_ParameterInfo&) = delete;

    /// Empties a port and opens it for additions.
    void init(int port);
    /// Frees all records of a port. Its head still points to where the first record was, until init clears
    /// it.
    void destroy(int port);
    /// Closes a port: every later addition gives null.
    void finalize(int port);

    /// The top-level group that was added last, or null.
    RegisterInfo* getRegisterInfo(int port) const;
    /// The top-level group that was added before \p info; the head of the port for null.
    RegisterInfo* getNextRegisterInfo(const RegisterInfo* info, int port) const;

    /// Adds a group: top-level without a parent. Under a parent that is no group the result is null, and that
    /// parent's next child takes an index one higher.
    RegisterInfo* addGroupInfo(int port, RegisterInfo* parent, const char* name);

    /// Adds a parameter under a group. A parent is required. Callers pass groups; a child of another record
    /// belongs to the port and takes its index from there, but such a record has no elements for it to join.
    RegisterInfo* addInfoInt(RegisterInfo* parent, const char* name, const char* parameterName, int from,
                             int to, int steps, int access, int range, int visibility, const char* unit,
                             int id, int port);
    RegisterInfo* addInfoUInt(RegisterInfo* parent, const char* name, const char* parameterName,
                              std::uint32_t from, std::uint32_t to, std::uint32_t steps, int access,
                              int range, int visibility, const char* unit, int id, int port);
    RegisterInfo* addInfoInt64(RegisterInfo* parent, const char* name, const char* parameterName,
                               std::int64_t from, std::int64_t to, std::int64_t steps, int access, int range,
                               int visibility, const char* unit, int id, int port);
    RegisterInfo* addInfoUInt64(RegisterInfo* parent, const char* name, const char* parameterName,
                                std::uint64_t from, std::uint64_t to, std::uint64_t steps, int access,
                                int range, int visibility, const char* unit, int id, int port);
    RegisterInfo* addInfoDouble(RegisterInfo* parent, const char* name, const char* parameterName,
                                double from, double to, double steps, int access, int range, int visibility,
                                const char* unit, int id, int port);

    /// Adds an array of values. The record of an array has no place for a step: it is not kept.
    RegisterInfo* addInfoIntField(RegisterInfo* parent, const char* name, const char* parameterName,
                                  int nrOfElements, int from, int to, int steps, int access, int range,
                                  int visibility, const char* unit, int id, int port);
    RegisterInfo* addInfoUIntField(RegisterInfo* parent, const char* name, const char* parameterName,
                                   int nrOfElements, std::uint32_t from, std::uint32_t to,
                                   std::uint32_t steps, int access, int range, int visibility,
                                   const char* unit, int id, int port);
    RegisterInfo* addInfoDoubleField(RegisterInfo* parent, const char* name, const char* parameterName,
                                     int nrOfElements, double from, double to, double steps, int access,
                                     int range, int visibility, const char* unit, int id, int port);

    /// Adds an enumeration of \p nrOfElements empty entries, to be filled by addEnumNameValue.
    RegisterInfo* addInfoEnum(RegisterInfo* parent, const char* name, const char* parameterName,
                              int nrOfElements, int access, int range, int visibility, const char* unit,
                              int id, int port);
    /// Sets one entry of an enumeration; \p defName is its symbolic name or null.
    /// \param index  0 to nrOfElements - 1; it is not checked
    /// \return 0, or -500 when there is no memory for the name
    int addEnumNameValue(RegisterInfo* info, int index, const char* name, int value, const char* defName);

    /// Adds a text; a file name where \p fileExtension (a filter such as "*.lut") is given.
    RegisterInfo* addInfoString(RegisterInfo* parent, const char* name, const char* parameterName,
                                const char* fileExtension, int access, int range, int visibility,
                                const char* unit, int id, int port);

  private:
    struct RecordDeleter {
        void operator()(RegisterInfo* record) const;
    };
    using OwnedRecord = std::unique_ptr<RegisterInfo, RecordDeleter>;
    /// What every parameter has, whatever its kind.
    struct Description {
        RegisterInfo* parent;
        const char* name;
        const char* parameterName;
        int access, range, visibility;
        const char* unit;
        int id;
        int port;
    };

    static OwnedRecord makeRecord(REG_FORMAT format, int port, const char* name);
    static OwnedRecord makeParameter(REG_FORMAT format, const Description& description);
    bool acceptsRecords(int port) const;
    RegisterInfo* own(OwnedRecord record);
    RegisterInfo* ownUnder(RegisterInfo& parent, OwnedRecord record);
    RegisterInfo* addTopLevelGroup(OwnedRecord group);
    template <class SetPayload>
    RegisterInfo* addParameter(REG_FORMAT format, const Description& description, SetPayload setPayload);

    RegisterInfo* mGlobRegInfo[portCount] = {};
    [[maybe_unused]] int groupAutoIndex = 0;
    std::vector<RegisterInfo*> allRegInfo[portCount];
    bool allRegFinalized[portCount] = {};
};
