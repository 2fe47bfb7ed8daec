"""Names of classes and accessors: those of the schema, made valid and unique in C++."""

_KEYWORDS = set(
    """alignas alignof and and_eq asm auto bitand bitor bool break case catch char class compl concept const
    consteval constexpr constinit continue co_await co_return co_yield decltype default delete do double
    dynamic_cast else enum explicit export extern false float for friend goto if inline int long mutable
    namespace new noexcept not not_eq nullptr operator or or_eq private protected public register
    reinterpret_cast requires return short signed sizeof static static_assert static_cast struct switch
    template this thread_local throw true try typedef typeid typename union unsigned using virtual void
    volatile wchar_t while xor xor_eq""".split()
)

# What every class has already.
_MEMBERS = {"clone", "marshal", "unmarshal", "extras", "makeExtras", "dropExtras", "info", "tables", "option", "unset"}


def accessor(local):
    """The accessor of an attribute or element: its name, with "_" behind when C++ has taken the word."""
    name = "".join(c if c.isalnum() or c == "_" else "_" for c in local)
    return name + "_" if name in _KEYWORDS or name in _MEMBERS or name[0].isdigit() else name


class Names:
    """Hands out names; the second use of one gets the suffix _2, the third _3."""

    def __init__(self, *taken):
        self._used = {name: 1 for name in taken}

    def unique(self, name):
        count = self._used[name] = self._used.get(name, 0) + 1
        return name if count == 1 else self.unique(f"{name}_{count}")
