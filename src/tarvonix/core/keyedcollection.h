#ifndef TARVONIX_KEYEDCOLLECTION_H
#define TARVONIX_KEYEDCOLLECTION_H

#include <tarvonix/core/error.h>

#include <QHash>
#include <QString>
#include <QStringList>

#include <memory>
#include <utility>
#include <vector>

namespace tarvonix {

/*!
    The ordered, case-insensitive keyed collection behind Objetos, Referencias,
    Imagenes and the controls' collections of child controls.

    Entries keep their insertion order and are counted from 1. Keys compare
    without regard to letter case ("d12" finds "D12"); adding a key that is
    already present fails with Error::DuplicateKey and leaves the collection
    as it was.

    The contents are shared between the collection and the enumerators taken
    from it and copied only when the collection changes while an enumerator
    still reads them, so an enumerator always walks the contents it was taken
    from: a later add, remove or clear does not change what it yields.
*/
template<typename T>
class KeyedCollection
{
    struct Entry
    {
        QString key;
        T value;
    };
    struct Data
    {
        std::vector<Entry> entries;
        QHash<QString, qsizetype> positions; // folded key -> 0-based position
    };

public:
    class Enumerator;

    KeyedCollection()
        : d(std::make_shared<Data>())
    {
    }

    qsizetype count() const { return qsizetype(d->entries.size()); }
    bool isEmpty() const { return d->entries.empty(); }

    //! Appends \a value under \a key; fails with Error::DuplicateKey if the key is taken.
    void add(const QString &key, T value)
    {
        const QString folded = fold(key);
        if (d->positions.contains(folded))
            throw Error(Error::DuplicateKey);
        detach();
        d->positions.insert(folded, qsizetype(d->entries.size()));
        d->entries.push_back(Entry{key, std::move(value)});
    }

    bool contains(const QString &key) const { return d->positions.contains(fold(key)); }

    //! The 1-based position of \a key, or 0 when it is not present.
    qsizetype positionOf(const QString &key) const
    {
        const auto it = d->positions.constFind(fold(key));
        return it == d->positions.cend() ? 0 : *it + 1;
    }

    //! The value at the 1-based \a position; fails with Error::SubscriptOutOfRange outside 1..count().
    const T &at(qsizetype position) const
    {
        if (position < 1 || position > count())
            throw Error(Error::SubscriptOutOfRange);
        return d->entries[size_t(position - 1)].value;
    }

    //! The value under \a key; fails with Error::InvalidArgument when there is none.
    const T &at(const QString &key) const
    {
        const qsizetype position = positionOf(key);
        if (position == 0)
            throw Error(Error::InvalidArgument);
        return d->entries[size_t(position - 1)].value;
    }

    //! The value under \a key, or a default-constructed T when there is none.
    T value(const QString &key) const
    {
        const qsizetype position = positionOf(key);
        return position == 0 ? T() : d->entries[size_t(position - 1)].value;
    }

    //! The value at the 1-based \a position, or a default-constructed T outside 1..count().
    T value(qsizetype position) const
    {
        return position < 1 || position > count() ? T() : d->entries[size_t(position - 1)].value;
    }

    //! The key as it was given to add().
    QString keyAt(qsizetype position) const
    {
        if (position < 1 || position > count())
            throw Error(Error::SubscriptOutOfRange);
        return d->entries[size_t(position - 1)].key;
    }

    //! Removes the entry at the 1-based \a position; fails with Error::SubscriptOutOfRange.
    void removeAt(qsizetype position)
    {
        if (position < 1 || position > count())
            throw Error(Error::SubscriptOutOfRange);
        detach();
        const qsizetype index = position - 1;
        d->positions.remove(fold(d->entries[size_t(index)].key));
        d->entries.erase(d->entries.begin() + index);
        for (auto it = d->positions.begin(); it != d->positions.end(); ++it) {
            if (*it > index)
                --*it;
        }
    }

    //! Removes the entry under \a key; fails with Error::InvalidArgument when there is none.
    void remove(const QString &key)
    {
        const qsizetype position = positionOf(key);
        if (position == 0)
            throw Error(Error::InvalidArgument);
        removeAt(position);
    }

    /*!
        Starts over with new, empty contents when there is at least one entry;
        an empty collection is left as it is. Enumerators taken before keep
        what they were taken from.
    */
    void clear()
    {
        if (!d->entries.empty())
            d = std::make_shared<Data>();
    }

    //! An enumerator over the present contents, in insertion order.
    Enumerator enumerate() const { return Enumerator(d); }

    //! Keys in insertion order, as they were given.
    QStringList keys() const
    {
        QStringList result;
        result.reserve(count());
        for (const Entry &entry : d->entries)
            result.append(entry.key);
        return result;
    }

    /*!
        Forward iteration over the values, for range-for. The collection must
        not change during such a loop; take an enumerator to walk contents
        that the loop itself changes.
    */
    class const_iterator
    {
    public:
        using iterator_category = std::forward_iterator_tag;
        using value_type = T;
        using difference_type = std::ptrdiff_t;
        using pointer = const T *;
        using reference = const T &;

        const_iterator() = default;
        explicit const_iterator(typename std::vector<Entry>::const_iterator it)
            : m_it(it)
        {
        }
        reference operator*() const { return m_it->value; }
        pointer operator->() const { return &m_it->value; }
        const_iterator &operator++()
        {
            ++m_it;
            return *this;
        }
        const_iterator operator++(int)
        {
            const_iterator old = *this;
            ++m_it;
            return old;
        }
        bool operator==(const const_iterator &other) const = default;

    private:
        typename std::vector<Entry>::const_iterator m_it;
    };

    const_iterator begin() const { return const_iterator(d->entries.cbegin()); }
    const_iterator end() const { return const_iterator(d->entries.cend()); }

    //! Walks the contents the collection had when it was taken, whatever happens to it later.
    class Enumerator
    {
    public:
        Enumerator() = default;

        qsizetype count() const { return m_data ? qsizetype(m_data->entries.size()) : 0; }
        bool hasNext() const { return m_next < count(); }
        //! The next value; fails with Error::SubscriptOutOfRange past the end.
        const T &next()
        {
            if (!hasNext())
                throw Error(Error::SubscriptOutOfRange);
            return m_data->entries[size_t(m_next++)].value;
        }
        void reset() { m_next = 0; }

        const_iterator begin() const { return m_data ? const_iterator(m_data->entries.cbegin()) : const_iterator(); }
        const_iterator end() const { return m_data ? const_iterator(m_data->entries.cend()) : const_iterator(); }

    private:
        friend class KeyedCollection;
        explicit Enumerator(std::shared_ptr<const Data> data)
            : m_data(std::move(data))
        {
        }
        std::shared_ptr<const Data> m_data;
        qsizetype m_next = 0;
    };

private:
    static QString fold(const QString &key) { return key.toCaseFolded(); }

    // Copy the contents before changing them when an enumerator still reads them.
    void detach()
    {
        if (d.use_count() > 1)
            d = std::make_shared<Data>(*d);
    }

    std::shared_ptr<Data> d;
};

} // namespace tarvonix

#endif
