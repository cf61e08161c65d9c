'use strict';
// The phone preview of a vornosc layout: draws the page as the editor's canvas
// draws it in test mode, fills the screen with it, and tells vornosc of every
// finger (or the mouse) on it. vornosc works out the values and sends them.
(() => {
  const kTitleBand = 40;
  const kBannerInset = 8;
  const kCorner = 2.5;  // the corners of every rounded rectangle
  const kFaderCap = 16;
  const kToggleInset = 4;
  const kNameInset = 2;
  const kNameLineHeight = 14;
  const kRetryMilliseconds = 2000;
  // The full screen button, square, at the right end of the title strip.
  const kFullScreenSide = kTitleBand - 2 * kBannerInset;
  const kFullScreenMark = 4;
  // The colour table, index 9 white; indexes past it take gray's.
  const kColors = [
    [255, 0, 0], [0, 255, 0], [0, 0, 255], [255, 255, 0], [127, 0, 127],
    [127, 127, 127], [255, 127, 0], [127, 63, 0], [255, 20, 147], [255, 255, 255],
  ];
  const kGray = 5;
  const kLabel = 0, kFader = 1, kKnob = 2, kToggle = 3, kButton = 4;
  const kFaces = 'Arial, "Liberation Sans", sans-serif';
  const kLabelFont = `500 12px ${kFaces}`;
  const kNameFont = `400 12px ${kFaces}`;

  const canvas = document.getElementById('surface');
  const notice = document.getElementById('notice');
  const context = canvas.getContext('2d');
  const key = new URLSearchParams(location.search).get('key') || '';

  // What vornosc told of the layout: the screen, the page names, the
  // editor's page, and each page's controls.
  const layout = { width: 0, height: 0, pages: [], current: 0, controls: [] };
  // The page shown here: the editor's, until a tab is tapped.
  let shownPage = 0;
  // Where the page lies in the viewport, in CSS pixels, and whether it is
  // turned a quarter clockwise to fit a screen held the other way.
  const view = { scale: 1, left: 0, top: 0, turned: false };
  // When the page was last told something and last drawn, and how long that took.
  const stats = { toldAt: 0, drawnAt: 0, draws: 0, lastDrawMilliseconds: 0 };
  const held = new Set();  // pointers pressed on the page
  let socket = null;
  let drawRequested = false;
  // vornosc refused the key: it was restarted, or made a new one.
  let refused = false;

  function colorOf(index, divisor = 1) {
    const rgb = kColors[index >= 0 && index < kColors.length ? index : kGray];
    return `rgb(${rgb.map((channel) => Math.floor(channel / divisor)).join(',')})`;
  }

  function rectOf(control) {
    return {
      left: control.x, top: control.y,
      right: control.x + control.width, bottom: control.y + control.height,
    };
  }

  function inset(r, by) {
    return { left: r.left + by, top: r.top + by, right: r.right - by, bottom: r.bottom - by };
  }

  function isEmpty(r) {
    return r.right <= r.left || r.bottom <= r.top;
  }

  function fillRounded(r, color) {
    if (isEmpty(r)) return;
    const radius = Math.min(kCorner, (r.right - r.left) / 2, (r.bottom - r.top) / 2);
    context.beginPath();
    context.moveTo(r.left + radius, r.top);
    context.arcTo(r.right, r.top, r.right, r.bottom, radius);
    context.arcTo(r.right, r.bottom, r.left, r.bottom, radius);
    context.arcTo(r.left, r.bottom, r.left, r.top, radius);
    context.arcTo(r.left, r.top, r.right, r.top, radius);
    context.closePath();
    context.fillStyle = color;
    context.fill();
  }

  function fillEllipse(r, color) {
    if (isEmpty(r)) return;
    context.beginPath();
    context.ellipse((r.left + r.right) / 2, (r.top + r.bottom) / 2,
      (r.right - r.left) / 2, (r.bottom - r.top) / 2, 0, 0, 2 * Math.PI);
    context.fillStyle = color;
    context.fill();
  }

  // A shape outlined by a pen: the whole shape in the pen's colour, the
  // inside in the brush's, as the canvas draws it.
  function outlined(fill, r, penWidth, pen, brush) {
    fill(r, pen);
    if (brush !== pen) fill(inset(r, penWidth), brush);
  }

  // The level of a fader grows from its cap in proportion to the value
  // itself, not to its distance from the minimum, as on the canvas.
  function faderLevel(control, r) {
    const range = Math.abs(control.max - control.min) || 1;
    const level = { ...r };
    if (control.width < control.height) {
      const base = r.bottom - kFaderCap;
      level.top = base + Math.trunc(((r.top - base) * control.value) / range);
    } else {
      const base = r.left + kFaderCap;
      level.right = base + Math.trunc(((r.right - base) * control.value) / range);
    }
    return level;
  }

  function drawFader(control, r) {
    const full = colorOf(control.color);
    outlined(fillRounded, r, 2, full, colorOf(control.color, 8));
    fillRounded(faderLevel(control, r), full);
  }

  function drawKnob(control, r) {
    const box = { ...r };
    if (control.width >= control.height) box.right = box.left + control.height;
    else box.bottom = box.top + control.width;
    outlined(fillEllipse, box, 2, colorOf(control.color), colorOf(control.color, 8));
    fillEllipse(inset(box, Math.trunc((box.right - box.left) / 4)), '#000');
    // From the centre of the whole control, half its larger side long, over
    // 270 degrees from lower left; the angle in single precision.
    const cx = control.x + Math.trunc(control.width / 2);
    const cy = control.y + Math.trunc(control.height / 2);
    const radius = Math.trunc(Math.max(control.width, control.height) / 2);
    const steps = Math.abs(control.max - control.min + 1) || 1;
    const angle = Math.fround(Math.fround(Math.PI * 1.75) +
      (Math.PI * -1.5 * Math.fround(control.value - control.min)) / Math.fround(steps));
    context.beginPath();
    context.moveTo(cx, cy);
    context.lineTo(cx + Math.trunc(Math.sin(angle) * radius),
      cy + Math.trunc(Math.cos(angle) * radius));
    context.strokeStyle = colorOf(control.color);
    context.lineWidth = 2;
    context.stroke();
  }

  function drawToggle(control, r) {
    outlined(fillRounded, r, 2, colorOf(control.color), colorOf(control.color, 8));
    if (control.value === control.max) {
      const lit = inset(r, kToggleInset);
      if (!isEmpty(lit)) {
        context.fillStyle = colorOf(control.color);
        context.fillRect(lit.left, lit.top, lit.right - lit.left, lit.bottom - lit.top);
      }
    }
  }

  function drawLabel(control, r) {
    outlined(fillRounded, r, 1, '#000', colorOf(control.color, 4));
    context.font = kLabelFont;
    context.fillStyle = colorOf(control.color);
    context.textAlign = 'center';
    context.fillText(control.name, (r.left + r.right) / 2, r.top);
  }

  // A name wraps at spaces within its inset; a word too long for a line
  // stands alone on it, unclipped.
  function drawName(control, r) {
    const box = inset(r, kNameInset);
    context.font = kNameFont;
    context.fillStyle = '#fff';
    context.textAlign = 'left';
    let line = '';
    let top = box.top;
    for (const word of control.name.split(' ')) {
      const longer = line ? `${line} ${word}` : word;
      if (line && context.measureText(longer).width > box.right - box.left) {
        context.fillText(line, box.left, top);
        top += kNameLineHeight;
        line = word;
      } else {
        line = longer;
      }
    }
    if (line) context.fillText(line, box.left, top);
  }

  const kPainters = {
    [kLabel]: drawLabel,
    [kFader]: drawFader,
    [kKnob]: drawKnob,
    [kToggle]: drawToggle,
    [kButton]: (control, r) => fillRounded(r, colorOf(control.color, 2)),
  };

  function offersFullScreen() {
    return document.fullscreenEnabled && !document.fullscreenElement;
  }

  function fullScreenRect() {
    return {
      left: layout.width - kBannerInset - kFullScreenSide, top: kBannerInset,
      right: layout.width - kBannerInset, bottom: kTitleBand - kBannerInset,
    };
  }

  // The tabs of the pages, in the title strip where the canvas shows its
  // banner, beside the full screen button when there is one.
  function tabRects() {
    const count = layout.pages.length;
    const room = offersFullScreen() ? kFullScreenSide + kBannerInset : 0;
    const span = (layout.width - 2 * kBannerInset - room) / Math.max(count, 1);
    return layout.pages.map((name, i) => ({
      left: kBannerInset + i * span + (i > 0 ? 1 : 0),
      right: kBannerInset + (i + 1) * span - (i < count - 1 ? 1 : 0),
      top: kBannerInset,
      bottom: kTitleBand - kBannerInset,
    }));
  }

  function drawTitleStrip() {
    fillRounded({ left: 0, top: 0, right: layout.width, bottom: kTitleBand }, '#3f3f3f');
    context.font = kLabelFont;
    context.textAlign = 'center';
    tabRects().forEach((tab, i) => {
      const shown = i === shownPage;
      fillRounded(tab, shown ? '#7f0000' : '#262626');
      context.save();
      context.beginPath();
      context.rect(tab.left, tab.top, tab.right - tab.left, tab.bottom - tab.top);
      context.clip();
      context.fillStyle = shown ? '#fff' : '#bfbfbf';
      context.fillText(layout.pages[i] || `Page ${i + 1}`, (tab.left + tab.right) / 2, tab.top + 4);
      context.restore();
    });
    if (offersFullScreen()) drawFullScreenButton(fullScreenRect());
  }

  // Four corners pointing outwards.
  function drawFullScreenButton(r) {
    fillRounded(r, '#262626');
    const m = inset(r, 6);
    context.beginPath();
    for (const [x, y, dx, dy] of [[m.left, m.top, 1, 1], [m.right, m.top, -1, 1],
      [m.left, m.bottom, 1, -1], [m.right, m.bottom, -1, -1]]) {
      context.moveTo(x + dx * kFullScreenMark, y);
      context.lineTo(x, y);
      context.lineTo(x, y + dy * kFullScreenMark);
    }
    context.strokeStyle = '#bfbfbf';
    context.lineWidth = 2;
    context.stroke();
  }

  // The largest the layout shows at on a width by height screen, turned a
  // quarter when the screen is held the other way and that shows it larger.
  function fit(width, height) {
    const straight = Math.min(width / layout.width, height / layout.height);
    const turned = Math.min(width / layout.height, height / layout.width);
    view.turned = turned > straight;
    view.scale = Math.max(straight, turned);
    const across = view.turned ? layout.height : layout.width;
    const down = view.turned ? layout.width : layout.height;
    view.left = (width - across * view.scale) / 2;
    view.top = (height - down * view.scale) / 2;
  }

  // The layout's point under a point of the viewport.
  function layoutPoint(event) {
    const across = (event.clientX - view.left) / view.scale;
    const down = (event.clientY - view.top) / view.scale;
    return view.turned ? { x: down, y: layout.height - across } : { x: across, y: down };
  }

  // The layout shown grey and dark, as a thing of the past.
  function greyOut() {
    context.setTransform(1, 0, 0, 1, 0, 0);
    context.globalCompositeOperation = 'saturation';
    context.fillStyle = '#808080';
    context.fillRect(0, 0, canvas.width, canvas.height);
    context.globalCompositeOperation = 'source-over';
    context.fillStyle = 'rgba(0, 0, 0, 0.5)';
    context.fillRect(0, 0, canvas.width, canvas.height);
  }

  function draw() {
    drawRequested = false;
    const started = performance.now();
    stats.drawnAt = started;
    const ratio = window.devicePixelRatio || 1;
    const width = window.innerWidth;
    const height = window.innerHeight;
    if (canvas.width !== Math.round(width * ratio) || canvas.height !== Math.round(height * ratio)) {
      canvas.width = Math.round(width * ratio);
      canvas.height = Math.round(height * ratio);
    }
    context.setTransform(1, 0, 0, 1, 0, 0);
    context.fillStyle = '#000';
    context.fillRect(0, 0, canvas.width, canvas.height);
    if (layout.width > 0 && layout.height > 0) {
      fit(width, height);
      const s = ratio * view.scale;
      if (view.turned) {
        // The layout's top along the screen's right edge.
        context.setTransform(0, s, -s, 0, ratio * view.left + s * layout.height, ratio * view.top);
      } else {
        context.setTransform(s, 0, 0, s, ratio * view.left, ratio * view.top);
      }
      context.textBaseline = 'top';
      drawTitleStrip();
      const controls = layout.controls[shownPage] || [];
      // The control with the lowest index is drawn last, on top.
      for (let i = controls.length - 1; i >= 0; --i) {
        const control = controls[i];
        const painter = kPainters[control.type];
        if (!painter) continue;
        const r = rectOf(control);
        painter(control, r);
        if (control.type !== kLabel) drawName(control, r);
      }
      if (refused) greyOut();
    }
    stats.lastDrawMilliseconds = performance.now() - started;
    stats.draws += 1;
  }

  function requestDraw() {
    if (drawRequested) return;
    drawRequested = true;
    requestAnimationFrame(draw);
  }

  function say(text) {
    notice.textContent = text;
    notice.hidden = !text;
  }

  function take(message) {
    stats.toldAt = performance.now();
    if (message.kind === 'layout') {
      // A change of the editor's page shows here too.
      if (message.current !== layout.current || shownPage >= message.pages.length) {
        shownPage = message.current;
      }
      Object.assign(layout, {
        width: message.width, height: message.height, pages: message.pages,
        current: message.current,
      });
      layout.controls.length = message.pages.length;
      say(message.pages.length ? '' : 'No layout is open in VornOSC.');
    } else if (message.kind === 'page') {
      layout.controls[message.page] = message.controls;
    } else if (message.kind === 'values') {
      const controls = layout.controls[message.page];
      if (!controls) return;
      for (const [index, value] of message.values) {
        if (controls[index]) controls[index].value = value;
      }
    } else {
      return;
    }
    requestDraw();
  }

  function connect() {
    const scheme = location.protocol === 'https:' ? 'wss' : 'ws';
    socket = new WebSocket(`${scheme}://${location.host}/socket?key=${encodeURIComponent(key)}`);
    socket.onmessage = (event) => take(JSON.parse(event.data));
    socket.onclose = (event) => {
      held.clear();
      say(event.reason || 'The connection to VornOSC was lost; trying again…');
      const retry = () => setTimeout(connect, kRetryMilliseconds);
      // A browser learns nothing of why a WebSocket was refused; the page
      // asked again tells whether the key still holds.
      fetch(`/?key=${encodeURIComponent(key)}`, { method: 'HEAD', cache: 'no-store' }).then(
        (answer) => (answer.status === 403 ? giveUp() : retry()), retry);
    };
  }

  function giveUp() {
    refused = true;
    say('VornOSC was restarted or made a new key: scan the new code in its Phone Preview '
      + 'panel.');
    requestDraw();
  }

  function send(phase, event) {
    if (!socket || socket.readyState !== WebSocket.OPEN) return;
    const point = layoutPoint(event);
    socket.send(JSON.stringify({
      kind: 'pointer',
      pointer: event.pointerId,
      phase,
      page: shownPage,
      x: Math.floor(point.x),
      y: Math.floor(point.y),
    }));
  }

  function within(r, point) {
    return point.x >= r.left && point.x < r.right && point.y >= r.top && point.y < r.bottom;
  }

  function tabAt(event) {
    const point = layoutPoint(event);
    return tabRects().findIndex((tab) => within(tab, point));
  }

  function onFullScreenButton(event) {
    return offersFullScreen() && within(fullScreenRect(), layoutPoint(event));
  }

  // Full screen, held the layout's way where the browser allows it.
  function goFullScreen() {
    document.documentElement.requestFullscreen({ navigationUI: 'hide' }).then(() =>
      screen.orientation.lock(layout.width > layout.height ? 'landscape' : 'portrait'))
      .catch(() => {});
  }

  canvas.addEventListener('pointerdown', (event) => {
    event.preventDefault();
    if (event.pointerType === 'mouse' && event.button !== 0) return;
    if (onFullScreenButton(event)) return;
    const tab = tabAt(event);
    if (tab >= 0) {
      shownPage = tab;
      requestDraw();
      return;
    }
    held.add(event.pointerId);
    // A finger that slides off the page still ends its press here.
    canvas.setPointerCapture(event.pointerId);
    send('down', event);
  });
  canvas.addEventListener('pointermove', (event) => {
    if (held.has(event.pointerId)) send('move', event);
  });
  for (const [type, phase] of [['pointerup', 'up'], ['pointercancel', 'cancel']]) {
    canvas.addEventListener(type, (event) => {
      if (!held.delete(event.pointerId)) return;
      send(phase, event);
    });
  }
  // Only a click lets a page ask for full screen.
  canvas.addEventListener('click', (event) => {
    if (onFullScreenButton(event)) goFullScreen();
  });
  window.addEventListener('resize', requestDraw);
  window.addEventListener('orientationchange', requestDraw);
  document.addEventListener('fullscreenchange', requestDraw);

  // For a look from outside: what is drawn, where, and how fast.
  window.vornoscPreview = {
    layout, view, stats, shownPage: () => shownPage, refused: () => refused,
  };
  connect();
  requestDraw();
})();
