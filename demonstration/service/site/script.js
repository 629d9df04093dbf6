'use strict';

// What the site's own scripts and those who look into the page use: the token of this moment, empty when signed out.
window.Clerk = {
  session: {
    getToken: async () => {
      const answer = await fetch('/token', { credentials: 'same-origin', cache: 'no-store' });
      return answer.ok ? answer.text() : '';
    }
  }
};

const post = (address) => fetch(address, { method: 'POST', credentials: 'same-origin' });

const player = {
  sound: new Audio(),
  card: null,

  async toggle(card) {
    if (this.card === card && !this.sound.paused) {
      this.sound.pause();
      return;
    }
    if (this.card !== card) {
      this.mark(false);
      this.card = card;
      this.sound.src = card.dataset.audio;
      this.show(card);
    }
    try {
      await this.sound.play();
    } catch (error) {
      this.mark(false);
    }
  },

  show(card) {
    const bar = document.getElementById('player');
    bar.querySelector('img').src = card.querySelector('img').src;
    bar.querySelector('strong').textContent = card.querySelector('h3').textContent;
    bar.hidden = false;
    this.move();
  },

  mark(playing) {
    if (this.card) this.card.classList.toggle('playing', playing);
  },

  move() {
    const bar = document.getElementById('player');
    const seconds = Math.floor(this.sound.currentTime);
    bar.querySelector('time').textContent = `${Math.floor(seconds / 60)}:${String(seconds % 60).padStart(2, '0')}`;
    bar.querySelector('progress').value = this.sound.duration ? this.sound.currentTime / this.sound.duration : 0;
  }
};

player.sound.addEventListener('play', () => player.mark(true));
player.sound.addEventListener('pause', () => player.mark(false));
player.sound.addEventListener('ended', () => player.mark(false));
player.sound.addEventListener('timeupdate', () => player.move());

async function showMore(button) {
  button.disabled = true;
  const answer = await fetch(button.dataset.next, { credentials: 'same-origin' });
  const next = answer.headers.get('X-Next');
  document.querySelector('.grid').insertAdjacentHTML('beforeend', answer.ok ? await answer.text() : '');
  button.disabled = false;
  if (next) button.dataset.next = next;
  else button.parentElement.remove();
}

const actions = {
  'sign-in': async () => {
    await post('/sign-in');
    location.href = '/';
  },
  'sign-out': async () => {
    await post('/sign-out');
    location.href = '/';
  },
  'popup-sign-in': () => {
    window.open('/popup-sign-in', 'sign-in', 'width=420,height=420');
  },
  'popup-go': async () => {
    await post('/sign-in');
    if (window.opener) window.opener.location.href = '/';
    window.close();
  },
  'more': showMore
};

document.addEventListener('click', (event) => {
  const cover = event.target.closest('.cover');
  if (cover) {
    player.toggle(cover.closest('.card'));
    return;
  }
  const button = event.target.closest('button');
  const action = button && actions[button.id];
  if (action) action(button);
});
