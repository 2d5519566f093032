
// Numbers of which there may be millions.
class Numbers {
  constructor() {
    this.values = new Uint32Array(1024);
    this.length = 0;
  }

  push(value) {
    if (this.length === this.values.length) {
      const values = new Uint32Array(2 * this.length);
      values.set(this.values);
      this.values = values;
    }
    this.values[this.length++] = value;
  }
}

const map = (() => {
  // Told apart by eyes of all kinds, in both themes. They repeat where there are more variables.
  const palettes = {
    light: ['#0072b2', '#c25e00', '#00795c', '#a8437a', '#3f93c9', '#7a6a00', '#5b3fa8', '#b02a1c'],
    dark: ['#56b4e9', '#e69f00', '#2fc095', '#e48fc0', '#9ad0f5', '#f0e442', '#a99af0', '#ff8d75'],
  };
  const colourCount = palettes.light.length;
  const dark = matchMedia('(prefers-color-scheme: dark)');
  const canvas = byId('map-canvas');
  const margin = 10;

  let data = null;
  let view = null;
  let picture = null; // of all bits, without what is around the current one
  let current = -1;
  let alone = -1;

  // Calls take(first, second, bit) for locations as they stand in a cell: "0x1a:3,4 0x1b:5", those
  // of instances separated by semicolons.
  const parse = (text, take) => {
    const end = text.length;
    let first = 0;
    let bit = 0;
    for (let at = 0; at < end;) {
      let c = text.charCodeAt(at);
      if (c === 48 && text.charCodeAt(at + 1) === 120) {
        first = 0;
        for (at += 2; at < end && (c = text.charCodeAt(at)) !== 58; ++at) first = first * 16 + (c < 58 ? c - 48 : c - 87);
      } else if (c >= 48 && c <= 57) {
        let second = 0;
        for (; at < end && (c = text.charCodeAt(at)) >= 48 && c <= 57; ++at) second = second * 10 + c - 48;
        take(first, second, bit++);
      } else {
        if (c === 59) bit = 0;
        ++at;
      }
    }
  };

  const collect = () => {
    const owners = [];
    const firsts = new Numbers();
    const seconds = new Numbers();
    const bits = new Numbers();
    const ownerOf = new Numbers();
    let unknown = 0;
    forEachRow(['register', 'argument', 'variable'], (kind, kernel, text, element, offset) => {
      const locations = text.slice(text.lastIndexOf('\t') + 1);
      if (locations === '') return;
      const cells = text.slice(0, text.length - locations.length).split('\t');
      const name = kind === 'register' ? cells[0] : cells[3];
      const variable = kind === 'register' ? cells[1] : cells[0];
      const owner = {kernel, name, variable, element, offset, size: 0};
      parse(locations, (first, second, bit) => {
        if (first === 0 && second === 0) {
          ++unknown;
          return;
        }
        firsts.push(first);
        seconds.push(second);
        bits.push(bit);
        ownerOf.push(owners.length);
        ++owner.size;
      });
      owners.push(owner);
    });
    return {owners, firsts, seconds, bits, ownerOf, unknown, count: firsts.length};
  };

  const index = (found) => {
    const rows = Uint32Array.from(new Set(found.firsts.values.subarray(0, found.count))).sort();
    const numbers = new Map(Array.from(rows, (first, row) => [first, row]));
    found.rows = rows;
    found.rowOf = new Uint32Array(found.count);
    let least = Infinity;
    let most = 0;
    for (let i = 0; i < found.count; ++i) {
      const second = found.seconds.values[i];
      found.rowOf[i] = numbers.get(found.firsts.values[i]);
      if (second < least) least = second;
      if (second > most) most = second;
    }
    found.least = found.count > 0 ? least : 0;
    found.most = most;
    return found;
  };

  // Variables by the number of their bits; owners get the number of their colour.
  const colour = (found) => {
    const variables = new Map();
    for (const owner of found.owners) {
      const key = owner.kernel + '\t' + (owner.variable || owner.name);
      const variable = variables.get(key) ?? {kernel: owner.kernel, name: owner.variable || owner.name, size: 0, colour: 0};
      variable.size += owner.size;
      variables.set(key, variable);
      owner.of = variable;
    }
    found.variables = Array.from(variables.values()).filter((variable) => variable.size > 0);
    found.variables.sort((a, b) => b.size - a.size);
    found.variables.forEach((variable, i) => {
      variable.colour = i % colourCount;
    });
    return found;
  };

  const wholeView = () => ({x0: data.least, x1: data.most + 1, y0: 0, y1: data.rows.length});

  const load = () => {
    if (data) return;
    data = colour(index(collect()));
    view = wholeView();
  };

  // Pixels of a colour in the order of bytes in memory.
  const pixelOf = (colourText) => {
    const number = parseInt(colourText.slice(1), 16);
    return (255 << 24) | ((number & 255) << 16) | (number & 0xff00) | (number >> 16);
  };

  const placeOf = (i, width, height, ratio = 1) => ({
    x: margin * ratio + ((data.seconds.values[i] + 0.5 - view.x0) / (view.x1 - view.x0)) * (width - 2 * margin * ratio),
    y: ((data.rowOf[i] + 0.5 - view.y0) / (view.y1 - view.y0)) * height,
  });

  // How large a bit is drawn, in pixels.
  const sizeOfBits = (width, height, ratio) => {
    const least = (data.count > 20000 ? 2 : 5) * ratio;
    return {
      wide: Math.round(Math.min(Math.max(width / (view.x1 - view.x0), least), 14 * ratio)),
      high: Math.round(Math.min(Math.max((0.7 * height) / (view.y1 - view.y0), least), 14 * ratio)),
    };
  };

  const drawBits = (width, height, ratio) => {
    const image = new ImageData(width, height);
    const pixels = new Uint32Array(image.data.buffer);
    const theme = dark.matches ? palettes.dark : palettes.light;
    const colours = theme.map(pixelOf);
    const faded = pixelOf(dark.matches ? '#2a3441' : '#dfe4ea');
    const rowHeight = height / (view.y1 - view.y0);
    if (rowHeight >= 6 * ratio) {
      for (let y = rowHeight / 2; y < height; y += rowHeight) pixels.fill(faded, Math.floor(y) * width, Math.floor(y) * width + width);
    }
    const {wide, high} = sizeOfBits(width, height, ratio);
    const fill = (i, pixel) => {
      const {x, y} = placeOf(i, width, height, ratio);
      const left = Math.max(0, Math.round(x - wide / 2));
      const right = Math.min(width, Math.round(x + wide / 2));
      const bottom = Math.min(height, Math.round(y + high / 2));
      for (let top = Math.max(0, Math.round(y - high / 2)); top < bottom && left < right; ++top) {
        pixels.fill(pixel, top * width + left, top * width + right);
      }
    };
    const isShown = (i) => alone < 0 || data.owners[data.ownerOf.values[i]].of === data.variables[alone];
    for (let i = 0; i < data.count; ++i) {
      if (!isShown(i)) fill(i, faded);
    }
    for (let i = 0; i < data.count; ++i) {
      if (isShown(i)) fill(i, colours[data.owners[data.ownerOf.values[i]].of.colour]);
    }
    return image;
  };

  // Shows the picture with a frame around the current bit.
  const frame = () => {
    if (!picture) return;
    const ratio = devicePixelRatio || 1;
    const context = canvas.getContext('2d');
    context.putImageData(picture, 0, 0);
    if (current < 0) return;
    const {x, y} = placeOf(current, canvas.width, canvas.height, ratio);
    const {wide, high} = sizeOfBits(canvas.width, canvas.height, ratio);
    context.strokeStyle = dark.matches ? '#ffffff' : '#000000';
    context.lineWidth = 2 * ratio;
    context.strokeRect(x - wide / 2 - 3 * ratio, y - high / 2 - 3 * ratio, wide + 6 * ratio, high + 6 * ratio);
  };

  const drawAxes = () => {
    const label = (text, property, share) => {
      const element = make('span', '', text);
      element.style[property] = `${100 * share}%`;
      return element;
    };
    const shown = Math.min(8, Math.ceil(view.y1 - view.y0));
    const rows = [];
    for (let i = 0; i < shown; ++i) {
      const row = Math.min(data.rows.length - 1, Math.floor(view.y0 + ((view.y1 - view.y0) * (i + 0.5)) / shown));
      rows.push(label('0x' + data.rows[row].toString(16), 'top', (row + 0.5 - view.y0) / (view.y1 - view.y0)));
    }
    byId('map-rows').replaceChildren(...rows);
    const columns = [0, 0.25, 0.5, 0.75, 1].map((share) => label(Math.round(view.x0 + (view.x1 - 1 - view.x0) * share).toString(), 'left', share));
    byId('map-columns').replaceChildren(...columns);
  };

  const draw = () => {
    if (!data || data.count === 0) return;
    const ratio = devicePixelRatio || 1;
    const width = Math.round(canvas.clientWidth * ratio);
    const height = Math.round(canvas.clientHeight * ratio);
    if (width === 0 || height === 0) return;
    canvas.width = width;
    canvas.height = height;
    picture = drawBits(width, height, ratio);
    frame();
    drawAxes();
  };

  const sentenceOf = (i) => {
    const owner = data.owners[data.ownerOf.values[i]];
    const variable = owner.variable ? `${owner.variable}, ` : '';
    return `0x${data.firsts.values[i].toString(16)}:${data.seconds.values[i]}: bit ${data.bits.values[i]} of ${variable}${owner.name} in kernel ${owner.kernel}`;
  };

  const tell = (i) => {
    current = i;
    const tip = byId('map-tip');
    tip.hidden = i < 0;
    byId('map-bit').textContent = i < 0 ? '' : sentenceOf(i);
    frame();
    if (i < 0) return;
    tip.textContent = sentenceOf(i);
    const {x, y} = placeOf(i, canvas.clientWidth, canvas.clientHeight);
    tip.style.left = `${Math.max(0, Math.min(x + 12, canvas.clientWidth - tip.offsetWidth))}px`;
    tip.style.top = `${y + 14 + tip.offsetHeight > canvas.clientHeight ? Math.max(0, y - 14 - tip.offsetHeight) : y + 14}px`;
  };

  // The bit nearest to a place on the canvas, or -1 if none is near.
  const nearest = (x, y) => {
    const reach = 14;
    let best = -1;
    let bestDistance = reach * reach;
    const scaleX = (canvas.clientWidth - 2 * margin) / (view.x1 - view.x0);
    const scaleY = canvas.clientHeight / (view.y1 - view.y0);
    const seconds = data.seconds.values;
    for (let i = 0; i < data.count; ++i) {
      const distance = (margin + (seconds[i] + 0.5 - view.x0) * scaleX - x) ** 2 + ((data.rowOf[i] + 0.5 - view.y0) * scaleY - y) ** 2;
      if (distance < bestDistance) {
        best = i;
        bestDistance = distance;
      }
    }
    return best;
  };

  // The bit that a key leads to: the next one in the row, or the nearest one in the next row.
  const neighbour = (key) => {
    const step = key === 'ArrowRight' || key === 'ArrowDown' || key === 'Home' ? 1 : -1;
    const isVertical = key === 'ArrowDown' || key === 'ArrowUp';
    const from = current < 0 || key === 'Home' || key === 'End' ? -1 : current;
    const width = 2 ** 32;
    const order = (i) => step * (data.rowOf[i] * width + data.seconds.values[i]);
    let best = -1;
    const isBetter = (i) => {
      if (isVertical && from >= 0) {
        const rows = step * (data.rowOf[i] - data.rowOf[from]);
        if (rows <= 0) return false;
        if (best < 0) return true;
        const bestRows = step * (data.rowOf[best] - data.rowOf[from]);
        const away = (j) => Math.abs(data.seconds.values[j] - data.seconds.values[from]);
        return rows < bestRows || (rows === bestRows && away(i) < away(best));
      }
      return (from < 0 || order(i) > order(from)) && (best < 0 || order(i) < order(best));
    };
    for (let i = 0; i < data.count; ++i) {
      if (isBetter(i)) best = i;
    }
    return best < 0 ? current : best;
  };

  const zoom = (factor) => {
    const whole = wholeView();
    const middle = current >= 0 ? {x: data.seconds.values[current] + 0.5, y: data.rowOf[current] + 0.5} : {x: (view.x0 + view.x1) / 2, y: (view.y0 + view.y1) / 2};
    const span = (from, to, least, most, centre, smallest) => {
      const size = Math.min(most - least, Math.max(smallest, (to - from) * factor));
      const begin = Math.min(Math.max(centre - size / 2, least), most - size);
      return [begin, begin + size];
    };
    [view.x0, view.x1] = span(view.x0, view.x1, whole.x0, whole.x1, middle.x, Math.min(16, whole.x1 - whole.x0));
    [view.y0, view.y1] = span(view.y0, view.y1, whole.y0, whole.y1, middle.y, Math.min(4, whole.y1 - whole.y0));
    draw();
    tell(current);
  };

  const showWhole = () => {
    view = wholeView();
    draw();
    tell(current);
  };

  // What the keyboard leads to comes into view.
  const follow = (i) => {
    const isInside = i < 0 || (data.seconds.values[i] >= view.x0 && data.seconds.values[i] < view.x1 && data.rowOf[i] >= view.y0 && data.rowOf[i] < view.y1);
    current = i;
    if (isInside) {
      tell(i);
    } else {
      zoom(1);
    }
  };

  const showLegend = () => {
    const shown = data.variables.slice(0, colourCount);
    const items = shown.map((variable, i) => {
      const button = make('button');
      button.type = 'button';
      button.setAttribute('aria-pressed', 'false');
      const canvasOfSwatch = document.createElementNS('http://www.w3.org/2000/svg', 'svg');
      canvasOfSwatch.setAttribute('viewBox', '0 0 10 10');
      canvasOfSwatch.setAttribute('aria-hidden', 'true');
      const square = document.createElementNS('http://www.w3.org/2000/svg', 'rect');
      square.setAttribute('width', '10');
      square.setAttribute('height', '10');
      square.setAttribute('rx', '2');
      square.setAttribute('fill', (dark.matches ? palettes.dark : palettes.light)[i]);
      canvasOfSwatch.append(square);
      button.append(canvasOfSwatch, make('bdi', '', variable.name), make('span', 'quiet', `${variable.kernel}, ${variable.size === 1 ? '1 bit' : variable.size.toLocaleString('en') + ' bits'}`));
      button.addEventListener('click', () => {
        alone = alone === i ? -1 : i;
        for (const other of byId('map-legend').querySelectorAll('button')) other.setAttribute('aria-pressed', String(other === button && alone === i));
        draw();
      });
      const item = make('li');
      item.append(button);
      return item;
    });
    byId('map-legend').replaceChildren(...items);
    const others = data.variables.length - shown.length;
    const notes = [];
    if (others > 0) notes.push(`${others.toLocaleString('en')} more variables, whose colours repeat these`);
    if (data.unknown > 0) notes.push(`${data.unknown.toLocaleString('en')} bits at 0:0, which mostly means not known, are left out`);
    byId('map-note').textContent = notes.join('; ');
  };

  const open = () => {
    load();
    if (data.count === 0) {
      byId('map-note').textContent = 'No location is known: all are 0:0.';
      return;
    }
    showLegend();
    draw();
  };

  const listen = () => {
    let isAsked = false;
    canvas.addEventListener('pointermove', (event) => {
      if (isAsked || !data || data.count === 0) return;
      isAsked = true;
      requestAnimationFrame(() => {
        isAsked = false;
        const box = canvas.getBoundingClientRect();
        const i = nearest(event.clientX - box.left, event.clientY - box.top);
        if (i !== current) tell(i);
      });
    });
    canvas.addEventListener('pointerleave', () => {
      if (data && document.activeElement !== canvas) tell(-1);
    });
    canvas.addEventListener('focus', () => {
      load();
      if (data.count > 0 && current < 0) follow(neighbour('Home'));
    });
    canvas.addEventListener('blur', () => tell(-1));
    canvas.addEventListener('keydown', (event) => {
      if (!data || data.count === 0 || event.ctrlKey || event.metaKey || event.altKey) return;
      if (['ArrowLeft', 'ArrowRight', 'ArrowUp', 'ArrowDown', 'Home', 'End'].includes(event.key)) {
        follow(neighbour(event.key));
      } else if (event.key === '+') {
        zoom(0.5);
      } else if (event.key === '-') {
        zoom(2);
      } else if (event.key === '0') {
        showWhole();
      } else if (event.key === 'Enter' && current >= 0) {
        const owner = data.owners[data.ownerOf.values[current]];
        goTo(owner.element, owner.offset);
      } else {
        return;
      }
      event.preventDefault();
    });
    byId('map-in').addEventListener('click', () => zoom(0.5));
    byId('map-out').addEventListener('click', () => zoom(2));
    byId('map-whole').addEventListener('click', showWhole);
    new ResizeObserver(draw).observe(canvas);
    dark.addEventListener('change', () => data && open());
  };

  const start = () => {
    byId('map-body').hidden = false;
    listen();
    const observer = new IntersectionObserver((seen) => {
      if (!seen.some((entry) => entry.isIntersecting)) return;
      observer.disconnect();
      open();
    }, {rootMargin: '300px'});
    observer.observe(byId('map-body'));
  };

  // Whose bits are at a location.
  const ownersOf = function* (first, second) {
    load();
    for (let i = 0; i < data.count; ++i) {
      if (data.firsts.values[i] === first && data.seconds.values[i] === second) {
        yield {...data.owners[data.ownerOf.values[i]], bit: data.bits.values[i]};
      }
    }
  };

  return {start, ownersOf, open};
})();

if (byId('map-body')) map.start();

/* Print */

// What is folded is printed, too, unless it would be a book.
const mostPrinted = 300;
let folded = [];
addEventListener('beforeprint', () => {
  if (byId('map-body')) map.open();
  folded = Array.from(document.querySelectorAll('.kernel:not([open])')).slice(0, mostPrinted);
  for (const details of folded) details.open = true;
});
addEventListener('afterprint', () => {
  for (const details of folded) details.open = false;
});
