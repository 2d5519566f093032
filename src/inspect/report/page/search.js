'use strict';

// What the page can do beyond being read: a search over everything, and the map of the locations.
// Both take what they show from the tables of the page. Texts become text nodes, never markup.

const byId = (id) => document.getElementById(id);

const make = (name, className, text) => {
  const element = document.createElement(name);
  if (className) element.className = className;
  if (text !== undefined) element.textContent = text;
  return element;
};

// The kernel in which something is told, or nothing.
const kernelOf = (element) => element.closest('.kernel')?.querySelector('h3').textContent ?? '';

// What a line of a block tells; a line of mixed ones says itself which kernel and kind it is of.
const readLine = (block, kernel, line) => {
  if (block.dataset.kind !== 'mixed') return {kernel, kind: block.dataset.kind, text: line};
  const [name, kind] = line.split('\t', 2);
  return {kernel: kind === 'kernel' ? '' : name, kind, text: line.slice(name.length + kind.length + 2)};
};

// Rows stand in tables or, where there are many, as lines of preformatted text, cells separated by
// tabs. Calls take(kind, kernel, cells as one text, row or block, offset in the block).
const forEachRow = (kinds, take) => {
  for (const element of document.querySelectorAll('#kernels tr[data-kind], #kernels pre')) {
    const name = kernelOf(element);
    if (element.localName === 'tr') {
      if (kinds.includes(element.dataset.kind)) {
        take(element.dataset.kind, name, Array.from(element.cells, (cell) => cell.textContent.trim()).join('\t'), element, 0);
      }
      continue;
    }
    if (element.dataset.kind !== 'mixed' && !kinds.includes(element.dataset.kind)) continue;
    const text = element.textContent;
    for (let begin = 0; begin < text.length;) {
      const end = text.indexOf('\n', begin);
      const line = readLine(element, name, text.slice(begin, end));
      if (kinds.includes(line.kind)) take(line.kind, line.kernel, line.text, element, begin);
      begin = end + 1;
    }
  }
};

/* Going to a place */

const openAround = (element) => {
  for (let details = element.closest('details'); details; details = details.parentElement.closest('details')) {
    details.open = true;
  }
};

// A line of a block becomes the selection, since it is no element.
const selectLine = (block, offset) => {
  const walker = document.createTreeWalker(block, NodeFilter.SHOW_TEXT);
  for (let node = walker.nextNode(); node; node = walker.nextNode()) {
    if (offset >= node.length) {
      offset -= node.length;
      continue;
    }
    const end = node.data.indexOf('\n', offset);
    const range = document.createRange();
    range.setStart(node, offset);
    range.setEnd(node, end < 0 ? node.length : end);
    getSelection().removeAllRanges();
    getSelection().addRange(range);
    block.scrollTop += range.getBoundingClientRect().top - block.getBoundingClientRect().top - block.clientHeight / 2;
    return;
  }
};

const goTo = (element, offset) => {
  openAround(element);
  for (const marked of document.querySelectorAll('.found')) marked.classList.remove('found');
  if (element.localName === 'pre') {
    selectLine(element, offset);
  } else {
    element.classList.add('found');
    element.tabIndex = -1;
  }
  element.scrollIntoView({block: 'center'});
  element.focus({preventScroll: true});
};

document.addEventListener('click', (event) => {
  const link = event.target.closest('a[href^="#k"]');
  const target = link && document.getElementById(link.hash.slice(1));
  if (target) target.open = true;
});

/* Search */

const search = (() => {
  const mostHits = 100;
  let entries = null;
  let blocks = null;

  const collect = () => {
    entries = [];
    blocks = [];
    for (const element of document.querySelectorAll('main [data-kind]')) {
      const where = element.localName === 'h3' ? '' : kernelOf(element);
      const kind = element.dataset.kind;
      if (element.localName === 'pre') {
        blocks.push({kind, where, element, text: element.textContent, lower: null});
        continue;
      }
      const cells = element.localName === 'tr' ? Array.from(element.cells, (cell) => cell.textContent.trim()) : [element.textContent];
      const name = (element.querySelector('th') ?? element).textContent.trim();
      entries.push({kind, where, element, offset: 0, name, text: cells.join('\t'), lower: cells.join('\t').toLowerCase()});
    }
  };

  // The best come first: the same name, then its last part, a beginning, a part, another cell.
  const rank = (name, query) => {
    const lower = name.toLowerCase();
    if (lower === query) return 0;
    if (lower.endsWith('/' + query)) return 1;
    if (lower.startsWith(query)) return 2;
    return lower.includes(query) ? 3 : 4;
  };

  const findInBlock = (block, query, hits) => {
    block.lower ??= block.text.toLowerCase();
    // Lower case may have another length, which would move all that follows.
    const text = block.lower.length === block.text.length ? block.lower : block.text;
    let count = 0;
    for (let at = text.indexOf(query); at >= 0; ++count) {
      const end = text.indexOf('\n', at);
      if (hits.length < mostHits) {
        const begin = text.lastIndexOf('\n', at) + 1;
        const line = readLine(block.element, block.where, block.text.slice(begin, end));
        hits.push({kind: line.kind, where: line.kernel, element: block.element, offset: begin, name: line.text.split('\t', 1)[0], text: line.text});
      }
      at = text.indexOf(query, end);
    }
    return count;
  };

  const find = (query) => {
    if (!entries) collect();
    let hits = entries.filter((entry) => entry.lower.includes(query));
    hits.sort((a, b) => rank(a.name, query) - rank(b.name, query));
    let count = hits.length;
    hits = hits.slice(0, mostHits);
    for (const block of blocks) count += findInBlock(block, query, hits);
    return {hits, count};
  };

  const findLocation = (first, second) => {
    const hits = [];
    for (const owner of map.ownersOf(first, second)) {
      hits.push({kind: 'bit ' + owner.bit, where: owner.kernel, element: owner.element, offset: owner.offset, name: owner.name, text: owner.name + '\t' + owner.variable});
    }
    return {hits: hits.slice(0, mostHits), count: hits.length};
  };

  const withMark = (element, text, query) => {
    const at = text.toLowerCase().indexOf(query);
    if (at < 0 || text.toLowerCase().length !== text.length) {
      element.append(text);
    } else {
      element.append(text.slice(0, at), make('mark', '', text.slice(at, at + query.length)), text.slice(at + query.length));
    }
    return element;
  };

  const shortened = (text) => (text.length > 300 ? text.slice(0, 300) + '…' : text);

  const show = (query) => {
    byId('results').hidden = query === '';
    byId('hits').replaceChildren();
    if (query === '') return;
    const location = /^(0x[0-9a-f]+|\d+):(\d+)$/.exec(query);
    const {hits, count} = location ? findLocation(Number(location[1]), Number(location[2])) : find(query);
    byId('found').textContent = count === 0 ? 'Nothing found' : count === 1 ? '1 found' : `${count.toLocaleString('en')} found` + (count > hits.length ? `, the first ${hits.length} of them:` : '');
    for (const hit of hits) {
      const link = make('a');
      link.href = '#';
      const rest = hit.text.split('\t').slice(1).filter((cell) => cell !== '').join(' · ');
      link.append(make('span', 'kind', hit.kind), withMark(make('bdi', 'name'), shortened(hit.name), query));
      link.append(withMark(make('span', 'where'), shortened([hit.where, rest].filter((part) => part !== '').join(' · ')), query));
      link.addEventListener('click', (event) => {
        event.preventDefault();
        byId('results').hidden = true;
        goTo(hit.element, hit.offset);
      });
      const item = make('li');
      item.append(link);
      byId('hits').append(item);
    }
  };

  return {show};
})();

const query = byId('query');
byId('search').hidden = false;
byId('search').addEventListener('submit', (event) => {
  event.preventDefault();
  byId('hits').querySelector('a')?.click();
});
query.addEventListener('input', () => search.show(query.value.trim().toLowerCase()));
query.addEventListener('focus', () => search.show(query.value.trim().toLowerCase()));

const moveInHits = (step) => {
  const links = Array.from(byId('hits').querySelectorAll('a'));
  const next = links.indexOf(document.activeElement) + step;
  (next < 0 ? query : links[Math.min(next, links.length - 1)])?.focus();
};

document.addEventListener('keydown', (event) => {
  const inSearch = event.target === query || byId('results').contains(event.target);
  if (event.key === '/' && !inSearch && !event.ctrlKey && !event.metaKey && !event.altKey) {
    query.focus();
    query.select();
  } else if (event.key === 'Escape' && !byId('results').hidden) {
    byId('results').hidden = true;
    query.focus();
    byId('results').hidden = true;
  } else if (inSearch && event.key === 'ArrowDown') {
    moveInHits(1);
  } else if (inSearch && event.key === 'ArrowUp') {
    moveInHits(-1);
  } else {
    return;
  }
  event.preventDefault();
});

document.addEventListener('pointerdown', (event) => {
  if (!event.target.closest('#results, #search')) byId('results').hidden = true;
});

/* Map */
