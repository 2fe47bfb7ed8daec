/*
 * The host's operations, as the module calls them. The host fills one table of this type and hands it to quillet_init;
 * it must live as long as the module. Usable from C and C++. docs/host-interface.md tells ownership and threading.
 *
 * The order of the members is part of the interface: never insert, only append.
 */
#ifndef QUILLET_HOST_HOST_API_H
#define QUILLET_HOST_HOST_API_H

#include <stddef.h>
#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

/* Opaque objects of the host. */
typedef struct HostContext HostContext; /* an execution context; every source belongs to one */
typedef struct HostSet HostSet;
typedef struct HostArray HostArray;
typedef struct HostList HostList;

/*
 * A value slot: 8 bytes. Which member holds is told by the type beside it: `integer` for integers and booleans (0 or
 * 1), `real` for reals, `text` for registered texts (null is the empty value), `object` for everything else.
 */
typedef union HostValue {
    int32_t integer;
    double real;
    const char* text;
    void* object;
    int64_t bits;
} HostValue;

/*
 * A type word: bits 0-11 the element type, bits 12-16 the class, flags above. In a statement the bits from 22 up give
 * the place of the field list of a record type in the array of types: at that place stands the field count, then one
 * word for each field, in which bits 12-21 hold the field's index and the bits from 22 up the place of the field's own
 * list, where the field is a record.
 */
typedef uint32_t HostType;

enum {
    hostTypeAny = 0,
    hostTypeInteger = 1,
    hostTypeReal = 2,
    hostTypeText = 3,
    hostTypeBoolean = 4,
    hostTypeFirstObject = 9, /* types from here on may offer conversion to and from text */

    hostTypeMask = 0xfff,
    hostClassMask = 0x1f000,
    hostClassArray = 0x2000,
    hostClassSet = 0x3000,
    hostClassList = 0x4000,
    hostClassUnion = 0x6000,
    hostClassRecord = 0xa000,
    hostClassAlias = 0xd000,
    hostFlagDynamic = 0x20000,
    hostFlagExplicit = 0x40000, /* a set with explicit elements; clear on a range set */

    hostFieldIndexShift = 12,
    hostFieldIndexMask = 0x3ff,
    hostFieldTableShift = 22
};

/* hostParam: what `code` asks for, and what `out` points to. */
enum {
    hostParamRealFormat = 1, /* const char**: the format text for reals, such as "%.15g" */
    hostParamFinishSets = 7  /* int*: non-zero asks that a set read from a file be finished with hostSetFinish */
};

/* hostTypeInfo: what `what` asks for. */
enum {
    hostInfoCapability = 1, /* capability word; both bits of hostTextCapable set: converts to and from text */
    hostInfoClass = 2,      /* class word of the type (mask hostClassMask); of an alias, bits 0-11 hold the base type */
    hostTextCapable = 12
};

/* hostResolvePath and hostOpenStream: bits of `mode`. */
enum {
    hostResolveWrite = 2,
    hostResolveAlways = 4,
    hostStreamReading = 0,
    hostStreamBinary = 1,
    hostStreamWriting = 2,
    hostStreamQuietly = 64 /* with reading: no report of a failure */
};

/* hostCloseStream: which stream. */
enum { hostInputStream = 0, hostOutputStream = 2 };

typedef struct HostApi {
    /* Language of the messages, for the catalogue. */
    const char* (*hostLanguage)(void);
    void (*hostParam)(HostContext* context, int code, void* out);
    /* Reports of errors: in a statement, printf style; of a driver, with a code. */
    void (*hostError)(HostContext* context, const char* format, ...);
    void (*hostDriverError)(HostContext* context, const char* text, int code);
    /* 0 when access to the file is allowed; then `buffer` holds the full path. */
    int (*hostResolvePath)(HostContext* context, const char* name, char* buffer, int size, int mode);
    /* One input and one output stream per context. Negative on failure. */
    int (*hostOpenStream)(HostContext* context, int mode, const char* name);
    /* Non-zero on failure. */
    int (*hostCloseStream)(HostContext* context, int which);
    /* Bytes read, 0 at the end, negative on error. */
    long (*hostStreamRead)(HostContext* context, void* buffer, long count);
    void (*hostStreamPrint)(HostContext* context, const char* format, ...);
    /* Prints a real by a printf format; the length, as snprintf gives it. */
    int (*hostFormatReal)(HostContext* context, char* buffer, int size, const char* format, double value);
    /* Scratch memory, zeroed when `flag` is 1; never null. */
    void* (*hostAlloc)(HostContext* context, size_t size, int flag);
    void (*hostFree)(HostContext* context, void* pointer);
    /* Makes a host string value out of a C text; the host keeps a copy. */
    const char* (*hostRegisterText)(HostContext* context, const char* text);

    /* Types. 0 on success. */
    int (*hostTypeInfo)(HostContext* context, HostType type, int what, uint32_t* out);
    /* The single base type of a union type, 0 when it has none. The second argument is 0. */
    void (*hostUnionBaseType)(HostContext* context, int reserved, HostType type, HostType* out);
    /* Length of the text, or negative. Never writes more than `size` bytes. */
    int (*hostValueToText)(HostContext* context, HostType type, HostValue value, char* buffer, int size);
    /* 0 on success. The last argument is 0. */
    int (*hostValueFromText)(HostContext* context, HostType type, void* object, const char* text, int reserved);
    /* Null on failure. The last argument is 0. */
    void* (*hostCreateObject)(HostContext* context, HostType type, int reserved);
    void (*hostDeleteObject)(HostContext* context, HostType type, void* object);
    /* Makes a new object of the alias type `type` from an object of its base type; the caller deletes both. */
    void* (*hostConvertObject)(HostContext* context, HostType type, void* object);

    /* Sets. Positions count from 1; for a range set an index is the integer itself. */
    int (*hostSetSize)(HostSet* set);
    HostType (*hostSetFlags)(HostSet* set);
    int (*hostRangeFirst)(HostSet* set);
    int (*hostRangeLast)(HostSet* set);
    int (*hostSetContains)(HostContext* context, HostSet* set, HostValue value);
    int (*hostSetFind)(HostContext* context, HostSet* set, HostValue value); /* 0 when absent */
    /* Finds or adds; non-zero on failure. */
    int (*hostSetAdd)(HostContext* context, HostSet* set, HostValue value, int* position);
    void (*hostSetElement)(HostContext* context, HostSet* set, int index, HostValue* value);
    void (*hostSetOpenWalk)(HostContext* context, HostSet* set);
    void (*hostSetCloseWalk)(HostContext* context, HostSet* set);
    void (*hostSetFinish)(HostContext* context, HostSet* set);

    /* Arrays. An index tuple has one int for each dimension. Walks answer non-zero at the end or when empty. */
    int (*hostArrayDims)(HostArray* array);
    void (*hostArraySets)(HostArray* array, HostSet** sets);
    HostType (*hostArrayElemType)(HostArray* array);
    int (*hostArrayCount)(HostArray* array);
    int (*hostArrayFirstTuple)(HostArray* array, int* indices);
    int (*hostArrayNextTuple)(HostArray* array, int* indices);
    int (*hostArrayFirstEntry)(HostArray* array, int* indices);
    /* The first entry behind `indices`, which need not be an entry itself. */
    int (*hostArrayNextEntry)(HostArray* array, int* indices);
    void (*hostArrayGet)(HostArray* array, const int* indices, HostValue* value);
    int (*hostArrayExists)(HostArray* array, const int* indices);
    /* 0 on success; 2 for a union or record element, whose object is then in `*value`. */
    int (*hostArrayStore)(HostContext* context, HostArray* array, const int* indices, HostValue* value);
    int (*hostArrayStoreText)(HostContext* context, HostArray* array, const int* indices, const char* text);
    int (*hostTupleCompare)(int dims, const int* a, const int* b);
    /* Brackets of an update. Non-zero from Begin refuses it; End gives back `status` or its own failure. */
    int (*hostArrayBegin)(HostContext* context, HostArray* array);
    int (*hostArrayEnd)(HostContext* context, HostArray* array, int status);

    /* Lists. */
    int (*hostListLength)(HostList* list);
    /* With a class where the elements have one: hostClassArray for a list of arrays, hostClassUnion for a list of any;
       0 when the list has no element type. hostFlagDynamic: elements may be appended. */
    HostType (*hostListElemType)(HostList* list);
    /* The handle after `previous` (null to begin), null at the end. `type` is the item's own type word: 0 with a union
       as the value, an array with hostClassArray. */
    void* (*hostListNext)(HostList* list, void* previous, HostType* type, HostValue* value);
    /* 0 on success. The last argument is 0. */
    int (*hostListAppend)(HostContext* context, HostList* list, HostType type, HostValue value, int reserved);

    /* Records. `field` is the field's index. */
    void (*hostFieldRef)(HostContext* context, HostType recordType, void* record, int field, HostValue* out);
    int (*hostFieldSet)(HostContext* context, HostType recordType, void* record, int field, HostValue value);

    /* Unions: the kind held is 0 nothing, 1 integer, 2 real, 3 text, 4 boolean, above that another type. */
    int (*hostUnionGet)(HostContext* context, void* object, HostValue* value);
    /* The type of what it holds, hostTypeAny when it holds nothing; with hostTypeAny, hostValueFromText takes the union
       itself as its object. */
    HostType (*hostUnionType)(void* object);
    int (*hostUnionSet)(HostContext* context, void* object, int kind, HostValue value);
    int (*hostUnionClear)(HostContext* context, void* object);
} HostApi;

/*
 * What the module offers through the interface block. A reader of the block sees pairs of a 32-bit count (with 4 bytes
 * of padding) and a pointer.
 */
typedef struct HostTable {
    int32_t count;
    const void* rows;
} HostTable;

typedef struct HostServiceRow {
    int64_t code;
    const void* value; /* a pointer or a plain integer, by the code */
} HostServiceRow;

typedef struct HostInterfaceBlock {
    HostTable reserved[3];
    HostTable services; /* HostServiceRow */
} HostInterfaceBlock;

typedef struct HostDriverRow {
    const char* name;          /* null ends the table */
    const HostServiceRow* ops; /* ended by a row of code 0 */
} HostDriverRow;

/* Codes of the service table. */
enum {
    hostServiceVersionCheck = 2,  /* int (*)(int version): non-zero refuses */
    hostServiceShutdown = 3,      /* int (*)(void) */
    hostServiceDrivers = 8,       /* HostDriverRow* */
    hostServiceReset = 10,        /* int (*)(void) */
    hostServiceAskVersion = 12,   /* void (*)(int what, HostValue value, int* version) */
    hostServiceVendor = 17,       /* const char* */
    hostServiceLowestVersion = 22 /* the integer itself */
};

/* Codes of a driver's op table, and the types of the operations. */
enum { hostOpOpen = 1, hostOpClose = 2, hostOpRead = 5, hostOpWrite = 6, hostOpUsage = 7, hostOpSize = 8 };

/* Bits of the open flags. */
enum {
    hostOpenSet = 1,            /* out: always set */
    hostOpenUpdate = 2,         /* in: open for update */
    hostOpenFound = 0x20,       /* out: cleared when a source is returned or found, and on a failed lookup */
    hostOpenNoStream = 0x40,    /* out: the host's stream could not be opened */
    hostOpenXmlEngine = 0x10000 /* the Open XML engine; set by the driver itself */
};

typedef void* (*HostOpenOp)(HostContext* context, uint32_t* openFlags, const char* name);
typedef int (*HostCloseOp)(HostContext* context, void* source);
/*
 * The slot of an item points to the variable of a scalar (its HostValue for types 1 to 4, else its object), or holds
 * the set, list or array itself. The result is the number of items not done. `counters` has one int for each item; a
 * done item's value slot is set to 0.
 */
typedef int (*HostReadOp)(HostContext* context, void* source, int itemCount, const char* const* labels,
                          const HostType* types, HostValue* values, int* counters);
typedef int (*HostWriteOp)(HostContext* context, void* source, int itemCount, const char* const* labels,
                           const HostType* types, HostValue* values);
typedef int64_t (*HostSizeOp)(HostContext* context, const char* fileName);

/* The module's only exported symbol. Always returns 0. */
typedef int (*QuilletInit)(const HostApi* hostApi, int* hostInterfaceVersion, int* moduleVersion,
                           void** interfaceBlock);

#ifdef __cplusplus
}
#endif

#endif
