-- Documents: purchase receipts, and the lines of the other kinds as far as products are concerned.
create table D8202 (
  noid nvarchar(12) not null primary key,
  kh_gys_id nvarchar(10),
  ck_id nvarchar(4),
  bdate datetime,
  edate datetime,
  send_id nvarchar(2),
  user_id nvarchar(10),
  YW_ID nvarchar(4),
  JY_ID nvarchar(2),
  note nvarchar(100),
  t int,
  sk float,
  sdate datetime
)
create index IX_D8202_kh_gys_id on D8202 (kh_gys_id)
create index IX_D8202_ck_id on D8202 (ck_id)
create index IX_D8202_send_id on D8202 (send_id)
create index IX_D8202_YW_ID on D8202 (YW_ID)
create index IX_D8202_JY_ID on D8202 (JY_ID)
go
-- adw names the unit row; DW_J packs and DW_L loose pieces of DW_ZH pieces a pack; d8201aid is the line of the order.
create table D8202A (
  noid nvarchar(12),
  id int,
  wl_id nvarchar(20),
  ck_id nvarchar(4),
  sl float,
  dj float,
  money float,
  sl_return float,
  DW_J float,
  DW_L float,
  DW_ZH float,
  note nvarchar(100),
  d8201aid int,
  adw int,
  jdate datetime
)
create index IX_D8202A_noid on D8202A (noid)
create index IX_D8202A_wl_id on D8202A (wl_id)
create index IX_D8202A_adw on D8202A (adw)
create index IX_D8202A_ck_id on D8202A (ck_id)
go
create table D8301A (
  NOID nvarchar(12),
  WL_ID nvarchar(20),
  CK_ID nvarchar(4),
  adw int,
  SL float,
  MONEY float,
  KC float,
  SL1 float,
  SL2 float,
  SL3 float
)
create index IX_D8301A_NOID on D8301A (NOID)
create index IX_D8301A_WL_ID on D8301A (WL_ID)
go
create table D704A (WL_ID nvarchar(20), CK_ID nvarchar(4), adw int)
create index IX_D704A_WL_ID on D704A (WL_ID)
go
create table D712A (WL_ID nvarchar(20), CK_ID nvarchar(4), adw int)
create index IX_D712A_WL_ID on D712A (WL_ID)
go
create table D713A (WL_ID nvarchar(20), CK_ID nvarchar(4), adw int)
create index IX_D713A_WL_ID on D713A (WL_ID)
go
create table D8101A (WL_ID nvarchar(20), CK_ID nvarchar(4), adw int)
create index IX_D8101A_WL_ID on D8101A (WL_ID)
go
create table D8102A (WL_ID nvarchar(20), CK_ID nvarchar(4), adw int)
create index IX_D8102A_WL_ID on D8102A (WL_ID)
go
create table D8103A (WL_ID nvarchar(20), CK_ID nvarchar(4), adw int)
create index IX_D8103A_WL_ID on D8103A (WL_ID)
go
create table D8201A (WL_ID nvarchar(20), CK_ID nvarchar(4), adw int)
create index IX_D8201A_WL_ID on D8201A (WL_ID)
go
create table D8203A (WL_ID nvarchar(20), CK_ID nvarchar(4), adw int)
create index IX_D8203A_WL_ID on D8203A (WL_ID)
go
create table D8300A (WL_ID nvarchar(20), CK_ID nvarchar(4), adw int)
create index IX_D8300A_WL_ID on D8300A (WL_ID)
go
create table D8302A (WL_ID nvarchar(20), CK_ID nvarchar(4), adw int)
create index IX_D8302A_WL_ID on D8302A (WL_ID)
go
create table D8303A (WL_ID nvarchar(20), CK_ID nvarchar(4), adw int)
create index IX_D8303A_WL_ID on D8303A (WL_ID)
go
create table D8401A (WL_ID nvarchar(20), CK_ID nvarchar(4), adw int)
create index IX_D8401A_WL_ID on D8401A (WL_ID)
go
create table D8402A (WL_ID nvarchar(20), CK_ID nvarchar(4), adw int)
create index IX_D8402A_WL_ID on D8402A (WL_ID)
go
create table D8403A (WL_ID nvarchar(20), CK_ID nvarchar(4), adw int)
create index IX_D8403A_WL_ID on D8403A (WL_ID)
go
